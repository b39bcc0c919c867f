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
    // Whether the entry last stored is on disk whole.
    bool entera() const { return entera_; }

  private:
    void grabarLineas(ErrorAplazado& aplazado);

    Sesion& sesion_;
    bool entera_ = true;
};

}  // namespace tarvoline::link
