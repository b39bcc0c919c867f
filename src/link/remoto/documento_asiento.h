// A whole entry as one XML document, operation GRABARASIENTO.
#pragma once

#include <string>

#include "link/remoto/formas.h"
#include "link/sesion.h"

namespace tarvoline::link::remoto {

// The pending collections of the session under its date and number. Lines as the caller gave them; dates
// "dd/mm/yyyy", amounts with a point.
std::string documentoAsiento(const Remite& remite, const Sesion& sesion);

}  // namespace tarvoline::link::remoto
