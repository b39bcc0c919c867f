#include "link/sesion.h"

#include "link/error_enlace.h"

namespace tarvoline::link {

void Sesion::entrar() {
    if (!empresa.abierta()) {
        throw ErrorEnlace(error_enlace::empresaNoAbierta,
                          "Empresa No Abierta ... Abrir Empresa y reintentar");
    }
    ponerEnVigor();
}

}  // namespace tarvoline::link
