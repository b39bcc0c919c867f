// The answer to LEERASIENTO: an entry as XML, its rows in attributes.
#pragma once

#include <string>
#include <string_view>

#include "link/pendientes.h"
#include "link/sesion.h"

namespace tarvoline::link::remoto {

struct AsientoLeido {
    bool hay = false;
    std::string fecha;  // as stored
    std::string numero;
    Pendientes lineas;  // pending, as read ones are
};

// The last entry in the answer; none in an empty one. Missing attributes read as "" and 0, unknown sections
// are passed over. Throws ErrorEnlace noDisponible for what is no XML, or has an entry that is none.
AsientoLeido leerAsiento(const Sesion& sesion, std::string_view respuesta);

// A date of an answer as "dd/mm/yy", converted by its length; "" for what is none.
std::string fechaDeRespuesta(const Sesion& sesion, std::string_view fecha);

}  // namespace tarvoline::link::remoto
