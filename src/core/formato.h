// Figures as the user sees them, and size units.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvoline::core {

// Units by index: 0 B, 1 KB, 2 MB, 3 GB, 4 TB, by 1024.
inline constexpr int unidadPantalla = 99;  // stands for Estado::gUnidadTamano

// Converts by powers of 1024; a unit index outside 0..4 gives 0.
double ConvertirUnidad(double valor, int de, int a, int unidadDePantalla = 2);
// A text that is no number gives 0.
double ConvertirUnidad(std::string_view valor, int de, int a, int unidadDePantalla = 2);

// "###,###,###,##0.00" and "###,###,###,###", with the separators of the user's locale (the format is for
// display: no figure is ever read back from it).
std::string formatoImporte(double valor);
std::string formatoEntero(std::int64_t valor);

}  // namespace tarvoline::core
