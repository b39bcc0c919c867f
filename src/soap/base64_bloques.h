// The bulk of Base64 in vector registers, where the processor has them: one source a processor family
// (base64_bloques_x86.cpp, base64_bloques_portable.cpp), chosen by the build.
#pragma once

#include <cstddef>

namespace tarvoline::soap {

// Encodes from the front of `origen` in whole groups of three bytes and says how many bytes it took: always a
// multiple of 3, perhaps 0, never all the way to the end. `destino` has room for the text of all `longitud`.
std::size_t codificarBloques(const unsigned char* origen, std::size_t longitud, char* destino);

// Decodes from the front of `origen` in whole groups of four characters and says how many characters it took:
// always a multiple of 4, perhaps 0. It stops before the first group that holds anything but the 64 letters.
// `destino` has room for the bytes of all `longitud`.
std::size_t decodificarBloques(const char* origen, std::size_t longitud, unsigned char* destino);

}  // namespace tarvoline::soap
