// The single steps under texto.h: one character of UTF-8, one code of Windows-1252.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarvoline::core {

struct LetraUtf8 {
    char32_t codigo = 0;
    std::size_t longitud = 1;  // bytes
    bool valida = true;        // false: a byte that starts no character; `codigo` is the byte
};

// The character that starts at `desde`, which lies inside the text. Strict as RFC 3629 asks.
LetraUtf8 leerLetra(std::string_view utf8, std::size_t desde);
// A surrogate or a number beyond Unicode is written as U+FFFD.
void anadirLetra(std::string& destino, char32_t codigo);

// The code of a character in Windows-1252; nothing when it has none there.
std::optional<unsigned char> codigoAnsi(char32_t codigo);
char32_t deCodigoAnsi(unsigned char ansi);

}  // namespace tarvoline::core
