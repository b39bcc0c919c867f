// Base64 (RFC 4648, section 4) for byte arrays on the wire.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "soap/valores.h"

namespace tarvoline::soap {

// Appends to `destino`.
void CodificarBase64(std::span<const std::byte> bytes, std::string& destino);
// White space is passed over; padding may be missing. Throws ErrorServicio on any other foreign character.
Bytes DecodificarBase64(std::string_view texto);

}  // namespace tarvoline::soap
