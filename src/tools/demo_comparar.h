// Two companies side by side, as the link reads them: every entry with all its lines, the statement of every
// account that they touch, and the tables beside the journal row by row.
#pragma once

#include <optional>
#include <string>

#include "tarvoline/enlace.h"

namespace tarvoline::tools {

struct Comparacion {
    int asientos = 0, apuntes = 0, cuentas = 0, filas = 0;  // that both have
    std::optional<std::string> diferencia;                  // the first one; nothing: they are equal
};

// Both have their company open.
Comparacion compararLibros(link::Enlace& una, link::Enlace& otra);

}  // namespace tarvoline::tools
