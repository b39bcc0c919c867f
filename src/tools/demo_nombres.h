// Plausible people, firms and goods of the demo company.
#pragma once

#include <string>

#include "tools/demo_azar.h"

namespace tarvoline::tools {

std::string persona(Azar& azar);
std::string sociedad(Azar& azar);
std::string articulo(Azar& azar);
// Eight digits and the letter that checks them.
std::string nif(Azar& azar);

}  // namespace tarvoline::tools
