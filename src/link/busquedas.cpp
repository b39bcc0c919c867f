#include "link/busquedas.h"

#include <stdexcept>

namespace tarvoline::link {

bool Busquedas::BuscarReferencia(std::string_view) {
    throw std::logic_error("not there yet");
}

void Busquedas::BuscarDescripcion(std::string_view, bool) {
    throw std::logic_error("not there yet");
}

void Busquedas::BuscarImporte(double) {
    throw std::logic_error("not there yet");
}

std::int32_t Busquedas::ExisteReferencia(std::string_view) {
    throw std::logic_error("not there yet");
}

std::int32_t Busquedas::ExisteIva(std::string_view) {
    throw std::logic_error("not there yet");
}

}  // namespace tarvoline::link
