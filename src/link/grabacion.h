// Worker: storing the pending entry.
#pragma once

#include <cstdint>

#include "link/sesion.h"

namespace tarvoline::link {

class Grabacion {
  public:
    explicit Grabacion(Sesion& sesion) : sesion_(sesion) {}
    // REQUIRES an open company.
    std::int32_t GrabarAsiento();

  private:
    Sesion& sesion_;
};

}  // namespace tarvoline::link
