// The client's envelopes: a call written, a reply read. Inside the folder only.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "soap/wsdl.h"

namespace tarvoline::soap {

// Replaces the content of `destino` (its memory is used again from call to call). Throws ErrorServicio when
// the number of arguments is not that of the operation's parameters, or a text cannot travel in XML.
void EscribirLlamada(const OperacionWsdl& operacion, std::span<const Valor> argumentos, std::string& destino);

// Parts named like a parameter are written into that argument, in the kind that the argument already has. The
// result is the first other part, "" when there is none. Throws ErrorServicio, also for a fault.
std::string LeerRespuesta(const OperacionWsdl& operacion, std::string_view xml, std::span<Valor> argumentos);

// The fault that the answer to a failed request carries; nothing when it carries none or cannot be read.
std::optional<ErrorServicio> LeerFallo(std::string_view xml);

}  // namespace tarvoline::soap
