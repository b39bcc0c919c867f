// The rates of VAT as callers name and see them.
#pragma once

#include <string_view>

#include "link/sesion.h"

namespace tarvoline::link {

// Number of a rate from its text: one character is its digit, two its number or letter form ("A1" is 101,
// "B3" 113); any other length 0.
int ValTIVA(std::string_view des);
// A rate of the company's file; an empty one when there is none.
TipoIvaClass leerTipoIva(Sesion& sesion, int numero);

}  // namespace tarvoline::link
