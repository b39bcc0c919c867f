// Base64 (RFC 4648, section 4) for byte arrays on the wire.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "soap/valores.h"

namespace tarvoline::soap {

// Characters that `bytes` bytes become, padding included.
constexpr std::size_t longitudBase64(std::size_t bytes) {
    return (bytes + 2) / 3 * 4;
}

// Appends to `destino`, padded, without line breaks. Does not allocate when the capacity is already there.
void CodificarBase64(std::span<const std::byte> bytes, std::string& destino);
// Blanks, tabs and line ends are passed over wherever they stand; padding may be missing, but when there is
// some it must be right. Throws ErrorServicio on any other foreign character and on a text that ends within a
// byte.
Bytes DecodificarBase64(std::string_view texto);

}  // namespace tarvoline::soap
