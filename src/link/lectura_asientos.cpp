#include "link/lectura_asientos.h"

#include <stdexcept>

namespace tarvoline::link {

void LecturaAsientos::LeerAsiento() {
    throw std::logic_error("not there yet");
}

void LecturaAsientos::leerVecino(Vecino) {
    throw std::logic_error("not there yet");
}

}  // namespace tarvoline::link
