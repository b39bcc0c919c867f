// The balances that a company keeps (Totales) against the lines that they come from: the period columns of
// every account and parent in PLANC and Costo, CARGOSA and ABONOSA of the head, and the counter of analytic
// lines, which must not be below a number in use. The entry counter is not looked at: whoever posts may
// number entries himself.
//
// Amounts agree when they are the same in the decimals of the company's currency. Nothing is changed.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "data/capa_datos.h"
#include "data/cuadre_asientos.h"
#include "data/empresa_suelta.h"
#include "data/sumas_lineas.h"

namespace tarvoline::data {

struct DiferenciaTotal {
    enum class Que {
        importe,   // the amount of a line, `registro` of `tabla`, is no number
        falta,     // an account or parent that posting makes is not there: `registro` 0
        columna,   // a column of an account
        cabecera,  // a total of the company
        contador,  // the analytic counter is below the highest number in use
    };
    Que que{};
    int tabla = 0;  // tabla::planc and so on; 0: the company file
    std::int64_t registro = 0;
    std::string cuenta;   // UTF-8
    std::string columna;  // title of the field, or its name in the head
    int campo = 0;        // field number of a column
    double presente = 0;
    double justo = 0;  // what the lines say
};
// In words, Spanish, UTF-8, one line.
std::string frase(const DiferenciaTotal& diferencia);
// An amount as people read it, with a point: up to 15 digits.
std::string textoDeImporte(double importe);

// One look at all of it. The lines are added up once and may then be compared several times.
class RevisionTotales {
  public:
    // Opens PLANC, EXTRA, Costo and Anali of the company in force, which `capa` is about; the tables of lines
    // with `lineas`. Throws platform::ErrorArchivo, ErrorDefinicion.
    explicit RevisionTotales(CapaDatos& capa, TablaSuelta::Acceso lineas = TablaSuelta::Acceso::mirar);

    // Throws platform::ErrorArchivo, like all that follow.
    void sumarLineas(const Progreso& progreso = {});
    // In the order of DiferenciaTotal::tabla, missing accounts before the columns of a table.
    std::vector<DiferenciaTotal> comparar();
    // As of the last comparison: accounts with lines whose parents (or, analytic ones, themselves) are not
    // there, UTF-8.
    const std::vector<std::string>& porAsegurar(int tabla) const;

    std::int64_t cuentas() const { return contables_.vivas + analiticas_.vivas; }
    // Accounts of journal lines that the chart does not have: their lines count in the head alone.
    std::int64_t cuentasFueraDelPlan() const { return contables_.fuera; }
    double debe() const { return contables_.sumas.debe(); }
    double haber() const { return contables_.sumas.haber(); }
    std::vector<AsientoDescuadrado> descuadrados() const { return cuadre_.descuadrados(); }
    // Somebody else has a table of lines open at this moment.
    bool enUso();

  private:
    struct Plan {
        int tabla;
        int tablaLineas;
        TablaSuelta cuentas;
        TablaSuelta lineas;
        int posicionCuenta;   // of a line
        int posicionImporte;  // of a line
        const std::array<int, 9>& niveles;
        bool creaCuentas;  // posting makes the accounts themselves, not only parents
        SumasLineas sumas{};
        std::unordered_map<std::string, std::int64_t> registros{};  // of each code the first
        std::vector<std::string> porAsegurar{};
        std::int64_t vivas = 0;
        std::int64_t fuera = 0;
    };

    void sumarPlan(Plan& plan, const Progreso& progreso, CuadreAsientos* cuadre);
    void compararPlan(Plan& plan, std::vector<DiferenciaTotal>& diferencias);
    void anotarFaltas(Plan& plan, const SaldosPorCuenta& saldos,
                      std::vector<DiferenciaTotal>& diferencias) const;
    void compararColumnas(Plan& plan, const SaldosPorCuenta& saldos,
                          std::vector<DiferenciaTotal>& diferencias) const;
    void compararCabecera(std::vector<DiferenciaTotal>& diferencias);
    bool distintos(double uno, double otro) const;

    CapaDatos& capa_;
    Plan contables_;
    Plan analiticas_;
    CuadreAsientos cuadre_;
    std::vector<DiferenciaTotal> importesMalos_;
};

struct VerificacionTotales {
    std::int64_t cuentas = 0;
    std::int64_t cuentasFueraDelPlan = 0;
    double debe = 0, haber = 0;  // of all journal lines
    bool enUso = false;          // others were at work
    std::vector<DiferenciaTotal> diferencias;
    // No differences: whoever posts may post so. While others are at work they may be about to balance.
    std::vector<AsientoDescuadrado> descuadrados;
};

// The whole check. While others post, a line stands for a moment before its totals do: what differs is looked
// at again, and only what differs by the same amount each time counts. Throws platform::ErrorArchivo,
// ErrorDefinicion.
VerificacionTotales verificarTotales(CapaDatos& capa, const Progreso& progreso = {});

}  // namespace tarvoline::data
