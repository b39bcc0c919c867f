#include "data/capa_datos.h"

#include <iostream>

namespace tarvoline::data {

void CapaDatos::avisar(std::string_view texto) const {
    if (alAvisar) {
        alAvisar(texto);
    } else {
        std::cerr << texto << '\n';
    }
}

void CapaDatos::mostrar(const core::Caja& caja) const {
    if (alMostrar) {
        alMostrar(caja);
    } else {
        avisar(caja.texto);
    }
}

}  // namespace tarvoline::data
