// Letters without their case, for names of files and settings.
#pragma once

#include <string>
#include <string_view>

namespace tarvoline::platform {

// The text with every Latin letter in lower case, by the simple case folding of Unicode (ASCII, Latin-1,
// Latin Extended-A and -B, Latin Extended Additional). Everything else stays, bytes that are no UTF-8
// included, so the result is fit for comparing, not for showing.
std::string plegarCaja(std::string_view utf8);

// One code point of the above.
char32_t plegarCaja(char32_t codigo);

bool igualPlegado(std::string_view a, std::string_view b);

// Order of names: case ignored, names that differ in case only by their bytes.
bool menorPlegado(std::string_view a, std::string_view b);

// Code points of a UTF-8 text; a byte that starts no character stands for itself, above all code points, so
// that it equals the same byte only.
std::u32string codigosDe(std::string_view utf8);

}  // namespace tarvoline::platform
