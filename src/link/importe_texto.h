// Amounts that callers give as texts.
#pragma once

#include <string_view>

namespace tarvoline::link {

// "1234.56", "1.234,56" or "1.234.567": before a comma, and where there are several, points part thousands.
// What is not all of it a number counts as 0.
double importeDeTexto(std::string_view texto);

}  // namespace tarvoline::link
