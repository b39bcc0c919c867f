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
// A text that is not one number from end to end (blanks around it aside) gives 0. The decimal point is ".".
double ConvertirUnidad(std::string_view valor, int de, int a, int unidadDePantalla = 2);

struct SeparadoresNumero {
    std::string miles;
    std::string decimal;
};

// Those of the user's locale, read once a process; "," and "." where it says nothing.
const SeparadoresNumero& separadoresLocales();

// "###,###,###,##0.00" and "###,###,###,##0" with these separators. For display alone: no figure is ever read
// back from it. Hundredths are rounded half away from zero.
std::string formatoImporte(double valor, const SeparadoresNumero& separadores = separadoresLocales());
std::string formatoEntero(std::int64_t valor, const SeparadoresNumero& separadores = separadoresLocales());

}  // namespace tarvoline::core
