// A text searched in a block of bytes, for blocks that mostly do not hold it.
#pragma once

#include <cstddef>
#include <string_view>

namespace tarvoline::data {

// Where `texto` first occurs in `bloque` at or behind `desde`, from 0; npos when it does not. An empty text
// occurs everywhere inside the block.
std::size_t buscarBytes(std::string_view bloque, std::string_view texto, std::size_t desde = 0);

}  // namespace tarvoline::data
