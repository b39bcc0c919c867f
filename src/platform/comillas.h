// The words of a settings file: names and values, in double quotes where they would not survive without
// (ajustes_texto.h tells the form).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarvoline::platform {

// Without the blanks and tabs at both ends.
std::string_view sinBlancos(std::string_view texto);

// The escape of a backslash, a line feed, a carriage return or a tab; empty for every other character.
std::string_view escapeDe(char c);

std::string escribirNombre(std::string_view nombre);
std::string escribirValor(std::string_view valor);

// Takes a name, the `final` character behind it and the blanks after that off `texto`. Nothing when there is
// no such name; `texto` is of no use then.
std::optional<std::string> leerNombre(std::string_view& texto, char final);
// The value that makes up all of `texto`, which has no blanks at its ends.
std::optional<std::string> leerValor(std::string_view texto);

}  // namespace tarvoline::platform
