// The balances that lines add up to: what posting each of them (Totales) has made of the accounts, of their
// parents and of the company.
//
// Memory grows with the accounts, not with the lines. Sums are exact to the last digit of a double, so they
// do not depend on the order of the lines. Account codes are Windows-1252 without the blanks at their end.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "data/regla_totales.h"
#include "data/tabla_suelta.h"

namespace tarvoline::data {

// A sum that keeps what single additions would round away (Neumaier).
class SumaExacta {
  public:
    void anadir(double valor);
    void anadir(const SumaExacta& otra);
    double valor() const { return suma_ + resto_; }

  private:
    double suma_ = 0;
    double resto_ = 0;
};

// The 15 debit columns, then the 15 credit columns of an account.
inline constexpr std::size_t columnasCuenta = 2 * static_cast<std::size_t>(periodosCuenta);
inline std::size_t lugarDeColumna(const ColumnaPeriodo& columna) {
    const int lugar = columna.periodo + (columna.haber ? periodosCuenta : 0);
    return static_cast<std::size_t>(lugar);
}
using SaldosCuenta = std::array<SumaExacta, columnasCuenta>;
using SaldosPorCuenta = std::unordered_map<std::string, SaldosCuenta>;

class CuadreAsientos;

class SumasLineas {
  public:
    // A line whose amount is no number: record and account. It counts as 0.
    using AlFallar = std::function<void(std::int64_t registro, std::string_view cuenta)>;

    // Adds the lines of a table that are alive, each to the account at `posicionCuenta` with the amount at
    // `posicionImporte`, and to its entry in `cuadre`, when there is one. Throws platform::ErrorArchivo;
    // std::out_of_range when the definition lacks a field.
    void sumar(TablaSuelta& lineas, int posicionCuenta, int posicionImporte, const AlFallar& alFallar,
               const Progreso& progreso = {}, CuadreAsientos* cuadre = nullptr);
    void anadir(std::string_view cuenta, const ColumnaPeriodo& columna, double importe);

    // Of each account of the lines, by the lines that name it.
    const SaldosPorCuenta& cuentas() const { return cuentas_; }
    // The same with what their parents get, `cuentaVale` telling which accounts count.
    SaldosPorCuenta conMayores(const std::array<int, 9>& niveles,
                               const std::function<bool(const std::string& cuenta)>& cuentaVale) const;
    // Of all lines, with an account or without.
    double debe() const { return debe_.valor(); }
    double haber() const { return haber_.valor(); }
    // The highest analytic number that a line bears; 0: none.
    std::int64_t mayorAnalitica() const { return mayorAnalitica_; }

  private:
    SaldosPorCuenta cuentas_;
    SumaExacta debe_, haber_;
    std::int64_t mayorAnalitica_ = 0;
    std::string cuenta_;  // of the line under way
};

}  // namespace tarvoline::data
