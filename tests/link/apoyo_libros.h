// Rows put into the tables of a company directly, as postings leave them, for the tests of what reads and
// removes them.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "apoyo_enlace.h"
#include "link/contexto_interior.h"
#include "link/posiciones.h"

namespace tarvoline::pruebas {

// A line of the journal; `importe` as stored, credits negative.
struct LineaDiario {
    std::string fecha;  // stored: "C60131" is 31/01/26
    std::string cuenta;
    std::string asiento;
    std::string descripcion;
    std::string tipo;
    double importe = 0;
    std::string referencia{};
    std::string analitica{};
};

using CamposFila = std::vector<std::pair<int, std::string>>;  // by position

inline std::string comoTexto(double valor) {
    std::string texto;
    data::ponerTextoDeNumero(valor, texto);
    return texto;
}

struct MundoLibros : MundoEnlace {
    data::Tablas& tablas() { return contexto.interior().tablas(); }

    // A row that is blank but for these fields; its record number. The tables are closed again.
    std::int32_t fila(int tabla, const CamposFila& campos) {
        tablas().AbrirTablasEmpresa();
        const auto registro = filaAbierta(tabla, campos);
        tablas().CerrarTodo();
        return registro;
    }
    // A line with its totals: of the journal, or an analytic one of `cuentaAnalitica`.
    std::int32_t linea(const LineaDiario& linea, const std::string& cuentaAnalitica = {}) {
        namespace extra = link::posicion::extra;
        const bool analitica = !cuentaAnalitica.empty();
        tablas().AbrirTablasEmpresa();
        const auto registro = filaAbierta(analitica ? data::tabla::anali : data::tabla::extra,
                                          {{extra::fecha, linea.fecha},
                                           {extra::cuenta, linea.cuenta},
                                           {extra::asiento, linea.asiento},
                                           {extra::descripcion, linea.descripcion},
                                           {extra::tipo, linea.tipo},
                                           {extra::importe, comoTexto(linea.importe)},
                                           {extra::diario, "1"},
                                           {extra::moneda, "0"},
                                           {extra::cambioMoneda, "1"},
                                           {extra::valorEnMoneda, comoTexto(linea.importe)},
                                           {extra::canal, "000"},
                                           {extra::usuario, "99"},
                                           {extra::numeroAnalitica, linea.analitica},
                                           {extra::cuentaAnalitica, cuentaAnalitica},
                                           {extra::fechaGrabacion, "C60309"},
                                           {extra::referencia, linea.referencia}});
        data::Totales& totales = contexto.interior().totales();
        if (analitica) {
            totales.ActualizarTotalesAnalitica(1, linea.importe);
        } else {
            totales.gImporte = linea.importe;
            totales.ActualizarTotalesCuenta(1);
        }
        tablas().CerrarTodo();
        return registro;
    }
    void cuenta(const std::string& codigo) {
        fila(data::tabla::planc, {{1, codigo}, {2, "Cuenta " + codigo}, {3, "0"}});
    }
    // Lines of 2026 at random, several an entry and a day, in any order.
    std::set<std::string> asientosAlAzar(std::mt19937& azar, int cuantas) {
        std::set<std::string> asientos;
        for (int i = 0; i < cuantas; ++i) {
            const std::string fecha = "C6" + core::conCeros(1 + static_cast<int>(azar() % 12), 2) +
                                      core::conCeros(1 + static_cast<int>(azar() % 3), 2);
            const std::string numero = core::conCeros(1 + static_cast<int>(azar() % 9), 6);
            fila(data::tabla::extra, {{1, fecha}, {3, numero}, {4, "Línea " + std::to_string(i)}});
            asientos.insert(fecha + numero);
        }
        return asientos;
    }
    bool todoCerrado() {
        for (int i = 0; i < data::numeroRanuras; ++i) {
            if (tablas().abierta(i)) return false;
        }
        return true;
    }
    std::size_t vivas(int tabla) {
        tablas().AbrirTablasEmpresa();
        std::size_t cuantas = 0;
        for (std::int32_t i = 1; i <= tablas().cuantosRegistros(tabla); ++i)
            cuantas += tablas().LeerRegistro(tabla, i) == data::EstadoRegistro::vivo ? 1U : 0U;
        tablas().CerrarTodo();
        return cuantas;
    }

  private:
    std::int32_t filaAbierta(int tabla, const CamposFila& campos) {
        tablas().blanquear(tabla);
        for (const auto& [posicion, texto] : campos)
            tablas().ponerTexto(tabla, posicion, texto);
        tablas().AnadirRegistro(tabla);
        return tablas().gRegistro;
    }
};

}  // namespace tarvoline::pruebas
