// Worker: taking back what has been posted.
#pragma once

#include <cstdint>
#include <string_view>

#include "link/sesion.h"

namespace tarvoline::link {

class Anulacion {
  public:
    explicit Anulacion(Sesion& sesion) : sesion_(sesion) {}
    std::int32_t AnularAsiento(std::string_view fecha, std::string_view numero);
    void AnularApuntePorReferencia(std::string_view referencia, bool incluirIva, bool incluirAnalitica);
    void AnularApuntePorRegistro(std::int32_t registro, bool incluirAnalitica);
    void AnularCuenta(std::string_view cuenta);

  private:
    Sesion& sesion_;
};

}  // namespace tarvoline::link
