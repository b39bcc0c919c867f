#include "link/grabacion.h"

#include <stdexcept>

namespace tarvoline::link {

std::int32_t Grabacion::GrabarAsiento() {
    throw std::logic_error("not there yet");
}

}  // namespace tarvoline::link
