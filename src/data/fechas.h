// Dates as texts.
//
// A stored date is six characters, year, month, day, that sort in the order of time: the years 1960 to 1999
// keep their two digits, from 2000 the tens digit of the year is a letter: "A" to "J" for 2000 to 2099, "K"
// onward for 2100 on. 31/12/24 is stored "C41231". None: six blanks, or a byte 0 at the head.
#pragma once

#include <string>
#include <string_view>

#include "data/capa_datos.h"

namespace tarvoline::data {

// Converts by the length of `fecha`:
//   0  ""                         7  "d/mm/yy"   stored, the century left out
//   2  year, a letter below 60    8  "dd/mm/yy"  stored, a letter below 60; "  /  /  " gives ""
//   5  "dd/mm" of the accounting year, stored
//   6  stored: "dd/mm/yy"; with `completa` "dd/mm/20yy" for "A" to "J"; "dd/mm/21yy" above, always; a byte 0
//      at the head "00/00/00"
//   9  day at 1, month at 4, last digits of the year at 7: "dd/mm/yyyy" with the century of today
//   10 "mm/dd/yyyy": "dd/mm/yy"
// Any other length gives "ERROR".
std::string FechaNormal(const CapaDatos& capa, std::string_view fecha, bool completa = false);

// The variant of posting: a stored date gives "dd/mm/yyyy", digits below 81 meaning 20yy; "dd/mm/yyyy" gives
// the stored date; "" gives ""; any other length "ERROR".
std::string FechaCompleta(std::string_view fecha);

// Two-digit year of the accounting year's month `mes`: the year after AÑO for months before APERTURA.
std::string AnoEjercicio(const CapaDatos& capa, std::string_view mes);

// A stored date that says that there is none.
bool fechaVacia(std::string_view guardada);

}  // namespace tarvoline::data
