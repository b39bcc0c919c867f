// The progress line of a transfer on a terminal.
#pragma once

#include <string>

#include "core/vista.h"

namespace tarvoline::consola {

class Progreso {
  public:
    // Watches the view while it lives. Draws nothing unless standard error is a terminal and `quiere`.
    Progreso(core::Vista& vista, bool quiere);
    ~Progreso();
    Progreso(const Progreso&) = delete;
    Progreso& operator=(const Progreso&) = delete;

  private:
    void dibujar(core::Parte parte);

    core::Vista& vista_;
    std::string ultima_;
    long long antes_ = 0;  // bytes of earlier runs, which have no part in this one's speed
};

}  // namespace tarvoline::consola
