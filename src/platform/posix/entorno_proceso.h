// Environment variables, read once where they are needed.
#pragma once

#include <optional>
#include <string>

namespace tarvoline::platform::posix {

// Empty counts as not set.
std::optional<std::string> variable(const char* nombre);
// First executable file of that name in PATH; nothing when there is none. A name with "/" is its own answer.
std::optional<std::string> buscarEjecutable(const std::string& nombre);

}  // namespace tarvoline::platform::posix
