// Worker: reading entries back into the pending collections, and walking from one to the next.
#pragma once

#include "link/operaciones.h"
#include "link/sesion.h"

namespace tarvoline::link {

class LecturaAsientos {
  public:
    explicit LecturaAsientos(Sesion& sesion) : sesion_(sesion) {}
    void LeerAsiento();
    void leerVecino(Vecino cual);

  private:
    Sesion& sesion_;
};

}  // namespace tarvoline::link
