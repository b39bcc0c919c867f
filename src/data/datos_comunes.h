// Files that companies share: where the one to be used lies.
#pragma once

#include <string>
#include <string_view>

#include "data/capa_datos.h"

namespace tarvoline::data {

// Settings that hold the folders of common files.
namespace clave_comun {
inline constexpr std::string_view monedas = "CON_DIR";
inline constexpr std::string_view iva = "IVA_DIR";
inline constexpr std::string_view globales = "GLOBAL_DIR";
}  // namespace clave_comun

// The path of the common file `archivo`, whose folder the setting `clave` holds. A file that bears the number
// of the company in force (characters 6 and 7) lies with the company. Without a setting it lies in the
// program's folder of the user ("Conceptos" in it for CON_DIR), which becomes the setting; so it does, after
// a box, when the file cannot be opened where the setting says. Into that folder the file is copied from the
// program directory at its first use. The path is given whether or not the file could be had.
//
// Without `archivo` the folder alone, with final separator; nothing is looked at or stored then.
std::string RutaDatoComun(CapaDatos& capa, std::string_view clave, std::string_view archivo);

}  // namespace tarvoline::data
