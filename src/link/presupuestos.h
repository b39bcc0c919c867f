// Worker: budgets of accounts.
#pragma once

#include <string_view>

#include "link/sesion.h"

namespace tarvoline::link {

class Presupuestos {
  public:
    explicit Presupuestos(Sesion& sesion) : sesion_(sesion) {}
    void CrearPresupuesto(std::string_view cuenta, std::string_view titulo, std::string_view nivel,
                          bool analitica);
    void ModificarPresupuesto(std::string_view cuenta, int mes, double importe);

  private:
    Sesion& sesion_;
};

}  // namespace tarvoline::link
