// Worker: the portfolio by conditions.
#pragma once

#include <functional>
#include <string_view>

#include "data/tabla_cursor.h"
#include "link/sesion.h"

namespace tarvoline::link {

class Cartera {
  public:
    explicit Cartera(Sesion& sesion) : sesion_(sesion) {}
    CarteraLeida LeerCartera(const FiltroCartera& filtro);
    void MarcarCartera(std::string_view marca, const FiltroCartera& filtro);
    void AnularCartera(const FiltroCartera& filtro);

  private:
    void recorrer(const FiltroCartera& filtro, const std::function<void(data::TablaCursor&)>& alPasar);

    Sesion& sesion_;
};

}  // namespace tarvoline::link
