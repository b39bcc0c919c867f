// An entry between the forms of the accounting link and a session on books.
#pragma once

#include <string>

#include "link/mostrador.h"
#include "server/enlace_forma.h"
#include "tarvoline/enlace.h"

namespace tarvoline::server {

// Stores the entry of a GRABARASIENTO document; its number. Throws ErrorForma, link::ErrorEnlace.
std::string grabarAsiento(const FormaEnlace& forma, link::Enlace& enlace);

// Throws ErrorForma for a text that is no sum of money.
void exigirImporte(const std::string& texto);

// The answer to LEERASIENTO: the entry that the session has read, or none.
std::string xmlDeAsiento(const link::Enlace& enlace, const link::Mostrador& mostrador);

}  // namespace tarvoline::server
