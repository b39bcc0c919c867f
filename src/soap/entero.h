// xsd:int in texts. Inside the folder only.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvoline::soap {

// White space around it and a plus sign are allowed. Throws ErrorServicio, naming `parametro`, on anything
// else and on what 32 bits do not hold.
std::int32_t leerEntero(std::string_view texto, std::string_view parametro);

}  // namespace tarvoline::soap
