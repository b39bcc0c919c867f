// Amounts that callers give as texts.
#pragma once

#include <string_view>

namespace tarvoline::link {

// "1234.56", or "1.234,56" with a comma: then points part thousands. What is no number counts as 0.
double importeDeTexto(std::string_view texto);

}  // namespace tarvoline::link
