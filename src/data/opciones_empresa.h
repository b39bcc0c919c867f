// The option text of a new company (data/crear_empresa.h has its grammar).
#pragma once

#include <optional>
#include <string_view>

#include "data/cabecera_empresa.h"

namespace tarvoline::data {

// Writes the options into the head; gives the number of the plan to copy when one is asked for.
std::optional<int> aplicarOpciones(CabeceraEmpresa& cabecera, std::string_view opciones);

}  // namespace tarvoline::data
