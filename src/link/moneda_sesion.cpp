#include "link/moneda_sesion.h"

#include <stdexcept>

namespace tarvoline::link {

void MonedaSesion::resolver() {
    throw std::logic_error("not there yet");
}

Enlace::ValoresMoneda MonedaSesion::calcular(double) const {
    throw std::logic_error("not there yet");
}

}  // namespace tarvoline::link
