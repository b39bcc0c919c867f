// What a line moves: the rule that postings (Totales) and whoever adds the lines up again (SumasLineas)
// share.
//
// Codes, marks and dates are Windows-1252 as the record has them, without the blanks at their end.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::data {

// Positions of the fields that take part.
namespace posicion_linea {
inline constexpr int fecha = 1, cuenta = 2, asiento = 3, tipo = 5, importeBase = 6, diario = 8, importe = 13,
                     numeroAnalitica = 18, cuentaAnalitica = 19;
}
namespace posicion_cuenta {
inline constexpr int codigo = 1, titulo = 2, nivel = 3, analitica = 6, debe = 12, haber = 13;
}

// Columns of one side of an account: 0 opening, 1 to 12 the months, 13 and 14 the closing periods.
inline constexpr int periodosCuenta = 15;

struct ColumnaPeriodo {
    bool haber = false;
    int periodo = 0;
    // Position of the column that the periods of this side are counted from.
    int posicionBase() const { return haber ? posicion_cuenta::haber : posicion_cuenta::debe; }
};

// Type "1" is a debit, "2" a credit; any other moves nothing. Journal "A" is the period 0, "B" 13, "C" 14,
// any other the month of the date (six characters as stored); a month that is none counts as 0.
std::optional<ColumnaPeriodo> columnaDeLinea(std::string_view tipo, std::string_view diario,
                                             std::string_view fecha);

struct Mayor {
    std::size_t nivel;  // 1 to 8
    std::string codigo;
};
// The parents of an account by the lengths of the levels (index 0 is not used): its beginning of each length
// that is shorter than itself. Two levels of one length give one parent, that of the first of them.
std::vector<Mayor> mayoresDe(std::string_view cuenta, const std::array<int, 9>& niveles);

}  // namespace tarvoline::data
