// A clock that stands where the test puts it.
#pragma once

#include "platform/reloj.h"

namespace tarvoline::pruebas {

class RelojFijo final : public platform::Reloj {
  public:
    explicit RelojFijo(platform::FechaHora local, std::chrono::system_clock::time_point ahora = {})
        : local_(local), ahora_(ahora) {}
    // Local time follows from the instant, in the zone of the process.
    explicit RelojFijo(std::chrono::system_clock::time_point ahora)
        : local_(platform::aLocal(ahora)), ahora_(ahora) {}

    platform::FechaHora local() const override { return local_; }
    std::chrono::system_clock::time_point ahora() const override { return ahora_; }
    void poner(platform::FechaHora local) { local_ = local; }
    void poner(std::chrono::system_clock::time_point ahora) {
        ahora_ = ahora;
        local_ = platform::aLocal(ahora);
    }

  private:
    platform::FechaHora local_;
    std::chrono::system_clock::time_point ahora_;
};

}  // namespace tarvoline::pruebas
