// Tables for the tests of the record layer: definitions of the nine tables of a company, small but of the
// real shapes, and a world with a company "07" in force.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "apoyo/mundo_datos.h"
#include "data/monedas.h"
#include "data/tablas.h"

namespace tarvoline::pruebas {

struct CampoPrueba {
    const char* nombre;
    int tipo;
    int ancho;
    int posicion;
};
using ClavesPrueba = std::vector<std::vector<data::SegmentoClave>>;

inline std::string ficheroDefinicion(const char* titulo, std::initializer_list<CampoPrueba> campos,
                                     const ClavesPrueba& claves) {
    data::DefinicionTabla definicion;
    definicion.titulo = titulo;
    for (const auto& campo : campos) {
        data::CampoTabla uno;
        uno.nombre = campo.nombre;
        uno.tipo = campo.tipo;
        uno.ancho = campo.ancho;
        uno.posicion = campo.posicion;
        definicion.campos.push_back(uno);
    }
    definicion.gNumeroCampos = static_cast<int>(campos.size());
    for (std::size_t i = 0; i < claves.size(); ++i)
        definicion.claves[i + 1] = claves[i];
    definicion.numeroClaves = static_cast<int>(claves.size());
    return data::componerDefinicion(definicion);
}

// Field numbers of the lines below.
namespace linea {
inline constexpr int fecha = 1, cuenta = 2, asiento = 3, descripcion = 4, importe = 5, punteo = 6, numero = 7,
                     cambio = 8;
inline constexpr int bytes = 60;
}  // namespace linea

// Entry lines: every form of field, 60 bytes, three keys of 12, 16 and 8 characters.
inline std::string definicionLineas() {
    return ficheroDefinicion("LINEAS DEL DIARIO",
                             {{"FECHA", 5, 6, 1},
                              {"CUENTA", 0, 10, 2},
                              {"ASIENTO", 0, 6, 3},
                              {"DESCRIPCION", 0, 20, 14},
                              {"IMPORTE", 3, 12, 6},
                              {"PUNTEO", 1, 4, 7},
                              {"NUMERO", 4, 8, 8},
                              {"CAMBIO", 2, 8, 9}},
                             {{{linea::fecha, 1, 6}, {linea::asiento, 1, 6}},
                              {{linea::cuenta, 1, 10}, {linea::fecha, 1, 6}},
                              {{linea::descripcion, 3, 8}}});
}

// Accounts: three texts, two runs of amounts.
namespace plan {
inline constexpr int cuenta = 1, titulo = 2, nivel = 3, debe = 4, haber = 6;
inline constexpr int bytes = 10 + 20 + 1 + 4 * 8;
}  // namespace plan

inline std::string definicionPlan() {
    return ficheroDefinicion("PLAN CONTABLE",
                             {{"CUENTA", 0, 10, 1},
                              {"TITULO", 0, 20, 2},
                              {"NIVEL", 0, 1, 3},
                              {"DEBE", 3, 12, 12},
                              {"DEBE ENERO", 3, 12, 41},
                              {"HABER", 3, 12, 13},
                              {"HABER ENERO", 3, 12, 61}},
                             {{{plan::cuenta, 1, 10}}, {{plan::titulo, 1, 20}, {plan::cuenta, 1, 10}}});
}

inline const char* const tablasPrueba[] = {"PLANC", "EXTRA", "DATOS", "IVA01", "EFECT",
                                           "PRESU", "COSTO", "PLANA", "ANALI"};

inline std::string definicionDe(std::string_view tabla) {
    return tabla == "EXTRA" || tabla == "ANALI" ? definicionLineas() : definicionPlan();
}

// What a program that shares the company does between two tries, seen from its boxes.
struct CajasVistas {
    std::vector<core::Caja> cajas;
    std::function<void()> alVerse;

    void escuchar(data::CapaDatos& capa) {
        capa.alMostrar = [this](const core::Caja& caja) {
            cajas.push_back(caja);
            if (alVerse) alVerse();
        };
    }
    std::string textos() const {
        std::string todos;
        for (const auto& caja : cajas)
            todos += caja.texto + "\n";
        return todos;
    }
};

struct MundoTablas : MundoDatos {
    MundoTablas() {
        for (const char* tabla : tablasPrueba) {
            carpeta.escribir("programa/" + std::string(tabla) + ".QZA", definicionDe(tabla));
        }
        carpeta.escribir("comunes/Moneda.QZF", data::componerMoneda({2, "EURO", "EUR", "", 0, 1, 2}));
        ajustes.GrabarRegistro("CON_DIR", carpeta.ruta("comunes"));
        capa.enVigor.gDirectorioEmpresa = datos();
        capa.enVigor.gEmpresaActual = "07";
        capa.gMultiusuario = true;
        capa.reintentosTablas = {3, std::chrono::milliseconds(1)};
        vistas.escuchar(capa);
    }

    bool abrir(data::Tablas& tablas, int numero, std::string_view nombre, int modo = 1) {
        return tablas.AbrirTabla(numero, nombre, modo, datos(), "07");
    }

    CajasVistas vistas;
};

inline void ponerLinea(data::Tablas& tablas, int tabla, std::string_view fecha, std::string_view cuenta,
                       std::string_view asiento, std::string_view descripcion,
                       std::string_view importe = "0") {
    tablas.blanquear(tabla);
    tablas.ponerCampo(tabla, linea::fecha, fecha);
    tablas.ponerCampo(tabla, linea::cuenta, cuenta);
    tablas.ponerCampo(tabla, linea::asiento, asiento);
    tablas.ponerCampo(tabla, linea::descripcion, descripcion);
    tablas.ponerCampo(tabla, linea::importe, importe);
}

// The records of a key in its order.
inline std::vector<std::int32_t> recorrido(data::Tablas& tablas, int tabla, int clave) {
    std::vector<std::int32_t> registros;
    const std::string numero = std::to_string(tabla);
    tablas.orden("F\\" + std::to_string(clave) + "\\" + numero);
    while (tablas.gEstado == 0) {
        registros.push_back(tablas.gRegistro);
        tablas.orden("N\\" + numero);
    }
    return registros;
}

}  // namespace tarvoline::pruebas
