// Worker: storing the pending entry.
#pragma once

#include <cstdint>

#include "link/asiento_en_curso.h"

namespace tarvoline::link {

class Grabacion {
  public:
    explicit Grabacion(Sesion& sesion) : sesion_(sesion) {}
    // REQUIRES an open company.
    std::int32_t GrabarAsiento();

  private:
    void grabarLineas(ErrorAplazado& aplazado);

    Sesion& sesion_;
};

}  // namespace tarvoline::link
