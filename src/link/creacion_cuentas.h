// Worker: making an account of a chart, or changing its title or analytic mark.
#pragma once

#include "data/tabla_cursor.h"
#include "link/operaciones.h"
#include "link/sesion.h"

namespace tarvoline::link {

class CreacionCuentas {
  public:
    explicit CreacionCuentas(Sesion& sesion) : sesion_(sesion) {}
    // Works through a cursor of its own, whether or not the company's tables are open, and leaves these as
    // they are.
    bool crear(TablaPlan plan, CuentaNueva& cuenta);

  private:
    bool crearOCambiar(data::TablaCursor& cursor, CuentaNueva& cuenta) const;

    Sesion& sesion_;
};

}  // namespace tarvoline::link
