// The rates of VAT as callers name and see them.
#pragma once

#include <string_view>

#include "link/sesion.h"

namespace tarvoline::link {

// Number of a rate from its text: one character is its digit, two its number or letter form ("A1" is 101,
// "B3" 113); any other length 0.
int ValTIVA(std::string_view des);
// A percentage that is kept as a single, as the number that was meant: 5.2, not 5.19999980926514.
double comoDoble(float porcentaje);
// A rate of the company's file; an empty one when there is none.
TipoIvaClass leerTipoIva(Sesion& sesion, int numero);

}  // namespace tarvoline::link
