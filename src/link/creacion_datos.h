// Worker: storing the master data of an account, and the global data of its person with it.
#pragma once

#include "link/sesion.h"

namespace tarvoline::link {

class CreacionDatos {
  public:
    explicit CreacionDatos(Sesion& sesion) : sesion_(sesion) {}
    void CrearDatos(const DatosNuevos& datos);

  private:
    void grabarFila(const DatosNuevos& datos);
    void grabarGlobales(const DatosNuevos& datos);

    Sesion& sesion_;
};

}  // namespace tarvoline::link
