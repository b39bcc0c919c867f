// Readable sources of the common files that ship: currency tables and VAT rates, one line a record.
//
//     moneda 0  EUR  2  1  EURO             row, abbreviation, decimals, rate to the base currency, name
//     tipo 4  21  5.2  IVA general, recargo     number, percentages of tax and surcharge, name
//
// A record without a line is empty. Both throw ErrorFuente: a line of another form, a record given twice, a
// value that does not fit, a source without any.
#pragma once

#include <string>
#include <string_view>

#include "data/fuente_lineas.h"

namespace tarvoline::data {

// A currency table of all its ten rows (data/monedas.h).
std::string compilarMonedas(std::string_view archivo, std::string_view utf8);
// A file of VAT rates up to the highest number given (data/tipos_iva.h).
std::string compilarTiposIva(std::string_view archivo, std::string_view utf8);

}  // namespace tarvoline::data
