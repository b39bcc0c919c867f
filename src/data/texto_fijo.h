// Texts of a fixed number of bytes in a file: Windows-1252, filled with blanks; a zero byte ends one early.
#pragma once

#include <string>
#include <string_view>

#include "core/texto.h"

namespace tarvoline::data {

// In UTF-8, without the blanks at its end.
inline std::string leerTextoFijo(std::string_view bytes) {
    bytes = bytes.substr(0, bytes.find('\0'));
    return core::aUtf8(bytes.substr(0, bytes.find_last_not_of(' ') + 1));
}

// Exactly `ancho` bytes: cut or filled.
inline std::string ponerTextoFijo(std::string_view utf8, std::size_t ancho) {
    auto bytes = core::aAnsi(utf8).bytes();
    bytes.resize(ancho, ' ');
    return bytes;
}

}  // namespace tarvoline::data
