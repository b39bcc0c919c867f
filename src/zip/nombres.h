// Entry names: between the archive's spelling and paths on disk.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarvoline::zip {

// True for a name that begins with a separator or a drive letter.
bool esAbsoluto(std::string_view nombre);

// The name under which a packed input goes in: "/" separates, without drive, leading separators and the
// components "." and "..".
std::string nombreRelativo(std::string_view nombre);

// The path, relative and with "/", where an entry may be unpacked; nothing when it would leave the target
// folder (absolute, a component of points and blanks such as "..", a NUL) or names no file at all.
std::optional<std::string> rutaSegura(std::string_view nombre);

// Code page 850, what archives without the UTF-8 flag are written in, to UTF-8.
std::string desdeCP850(std::string_view crudo);

}  // namespace tarvoline::zip
