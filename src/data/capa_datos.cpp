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

}  // namespace tarvoline::data
