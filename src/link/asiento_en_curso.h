// What the lines of one entry share while it is being stored.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "data/tabla_cursor.h"
#include "link/lector_registros.h"
#include "link/sesion.h"

namespace tarvoline::link {

// A journal line of an account with analytics, and how much of it has been divided so far.
struct CuentaAnalitica {
    std::string cuenta;
    double importe = 0;    // as stored in the base currency
    double repartido = 0;  // of it, by the analytic lines
    std::int32_t registro = 0;
};

// A problem that is told when the entry is on disk: the last one counts.
struct ErrorAplazado {
    std::uint32_t numero = 0;
    std::string texto;
};

class AsientoEnCurso {
  public:
    // The session is borrowed; its tables are open as long as lines are stored.
    explicit AsientoEnCurso(Sesion& suya);

    // Sets fields of the record under way, by position: gCampos of the table.
    void poner(int tabla, int posicion, std::string_view utf8);
    void poner(int tabla, int posicion, double valor);
    // Stores the record under way. Its number, or nothing when its keys were refused, which has been shown.
    std::optional<std::int32_t> anadir(int tabla);

    struct Cuenta {
        std::string titulo;
        bool analitica = false;
    };
    // An account of the chart; nothing when it is not there.
    std::optional<Cuenta> buscarCuenta(std::string_view codigo);
    // Name and NIF of an account: its master data, else the title that it has in the chart.
    struct Tercero {
        std::string nombre, nif;
    };
    Tercero buscarTercero(std::string_view codigo);

    // Changes fields of a stored record through a cursor, which stays open for the next one.
    template <typename Cambio>
    void cambiarRegistro(std::optional<data::TablaCursor>& cursor, int tabla, std::int32_t registro,
                         Cambio&& cambio) {
        data::TablaCursor& abierto = cursorDe(cursor, tabla);
        abierto.IrARegistro(registro);
        if (abierto.FinDeTabla()) return;
        abierto.Editar();
        cambio(abierto);
        abierto.Actualizar();
    }

    Sesion& sesion;
    data::Tablas& tablas;
    const std::string hoy;  // stored form
    std::vector<CuentaAnalitica> CuentasAnaliticas;
    ErrorAplazado aplazado;
    std::optional<data::TablaCursor> cursorExtra, cursorIva;

  private:
    // The first record whose key 1 is `codigo`; 0: none.
    std::int32_t buscar(int tabla, std::string_view codigo);
    data::TablaCursor& cursorDe(std::optional<data::TablaCursor>& cursor, int tabla);
};

}  // namespace tarvoline::link
