#include "link/tipos_iva_enlace.h"

#include <stdexcept>

namespace tarvoline::link {

int ValTIVA(std::string_view) {
    throw std::logic_error("not there yet");
}

TipoIvaClass leerTipoIva(Sesion&, int) {
    throw std::logic_error("not there yet");
}

}  // namespace tarvoline::link
