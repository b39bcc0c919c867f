#include "workflows/terminos.h"

#include "core/texto.h"

namespace tarvoline::workflows {

namespace {

constexpr int salioSinAceptar = 1;

}  // namespace

std::string Terminos::leer() const {
    return core::Sustituir(core::LeerTerminos(entorno_), "\r\n", "\n");
}

void Terminos::Command1_Click(int indice) {
    entorno_.almacen.Grabar("terminos y condiciones", std::to_string(indice));
    estado().gRefrescarEspacio = true;
}

bool Terminos::pendientes() const {
    return core::Val(entorno_.almacen.Leer("Terminos y condiciones")) == salioSinAceptar;
}

}  // namespace tarvoline::workflows
