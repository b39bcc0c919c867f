#include "link/anulacion.h"

#include <stdexcept>

namespace tarvoline::link {

std::int32_t Anulacion::AnularAsiento(std::string_view, std::string_view) {
    throw std::logic_error("not there yet");
}

void Anulacion::AnularApuntePorReferencia(std::string_view, bool, bool) {
    throw std::logic_error("not there yet");
}

void Anulacion::AnularApuntePorRegistro(std::int32_t, bool) {
    throw std::logic_error("not there yet");
}

void Anulacion::AnularCuenta(std::string_view) {
    throw std::logic_error("not there yet");
}

}  // namespace tarvoline::link
