// The program-wide state of the data layer, one object a process: what it works with, and the company in
// force.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/ajustes.h"
#include "core/carpetas.h"
#include "core/escritorio.h"
#include "core/estado.h"
#include "data/cabecera_empresa.h"
#include "platform/archivos.h"
#include "platform/marca_archivo.h"
#include "platform/reloj.h"

namespace tarvoline::data {

// The company that routines work on when none is named. A session of the link keeps its own and copies it
// to CapaDatos::enVigor before each operation, so that several sessions share one data layer.
struct EmpresaEnVigor {
    std::string gDirectorioEmpresa;  // with final separator
    std::string gEmpresaActual;      // two-character number; "" = no company is open
    std::string gArchivoEmpresa;     // full path of the `.QZT` file
    CabeceraEmpresa cabecera;        // as read when the company was opened

    // Length of each account level, by level (index 0 unused): 1-5 the digits of NIVEL, 6 and 7 AUX1 and
    // AUX2, 8 AUX3.
    std::array<int, 9> gNiveles{};
    // The same of the analytic accounts, 0-5; all zero when the company keeps none.
    std::array<int, 9> gNivelesAnalitica{};

    bool abierta() const { return !gEmpresaActual.empty(); }
};

inline constexpr std::size_t numeroMonedas = 10;

// What is worked with of the currency table of the company in force, row by row from 0 (data/monedas.h).
struct MonedasEnVigor {
    bool cargadas = false;
    double CambioMonedaBase = 0;  // of the second currency (row 1) to the base currency
    std::array<int, numeroMonedas> DecimalesMonedas{};
    std::array<std::string, numeroMonedas> AbreviaturasMonedas{};

    // The file that it was taken from, so that one that has not changed is not read again.
    struct Origen {
        std::string_view archivo;
        std::string ajuste;  // the folder's setting, as it was then
        std::string ruta;
        platform::MarcaArchivo marca;
    };
    Origen origen{};
};

// Tries on a file that is held or fails, and the longest wait of one of them for a held range.
struct Reintentos {
    int intentos = 1000;
    std::chrono::milliseconds espera{10};
};

struct CapaDatos {
    // All are borrowed and must outlive this object.
    platform::SistemaArchivos& archivos;
    core::Ajustes& ajustes;
    core::Carpetas& carpetas;
    platform::Reloj& reloj;

    EmpresaEnVigor enVigor{};
    // Other programs may be at the same company: switches byte-range locks on. Raised when the first company
    // is opened, never lowered.
    bool gMultiusuario = false;
    MonedasEnVigor monedas{};
    // Decimals of money as long as no currency table is loaded.
    int gDecimalesMoneda = 2;
    Reintentos reintentosEmpresa{};
    Reintentos reintentosTablas{500, std::chrono::milliseconds(10)};
    // A box of alMostrar waits for a person, who so sets the pace of what is tried again behind it.
    bool alguienMira = false;
    // The texts of the boxes, by number.
    const core::TablaErrores gErrores{};
    // Takes what was passed over without an error, for the log. Empty: the text goes to standard error.
    std::function<void(std::string_view)> alAvisar{};
    // Shows a box to the person. Empty: its text goes where `avisar` writes.
    std::function<void(const core::Caja&)> alMostrar{};

    void avisar(std::string_view texto) const;
    void mostrar(const core::Caja& caja) const;
};

}  // namespace tarvoline::data
