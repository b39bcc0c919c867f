// Worker: the currency of a session's amounts. The tables are open, so the company's currency table is
// loaded.
#pragma once

#include "link/sesion.h"

namespace tarvoline::link {

class MonedaSesion {
  public:
    explicit MonedaSesion(Sesion& sesion) : sesion_(sesion) {}

    // Finds the currency of the context in the company's table, which takes it in when it is not there, and
    // sets Sesion::gIndiceMoneda. The base currency has the rate 1.
    void resolver();
    Enlace::ValoresMoneda calcular(double importe) const;

  private:
    Sesion& sesion_;
};

}  // namespace tarvoline::link
