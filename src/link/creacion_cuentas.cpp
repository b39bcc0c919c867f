#include "link/creacion_cuentas.h"

#include <stdexcept>

namespace tarvoline::link {

bool CreacionCuentas::crear(TablaPlan, CuentaNueva&) {
    throw std::logic_error("not there yet");
}

}  // namespace tarvoline::link
