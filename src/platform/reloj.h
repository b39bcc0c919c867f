// The clock, behind a seam so that a test can stand at 23:59.
#pragma once

#include <chrono>
#include <memory>
#include <optional>

namespace tarvoline::platform {

struct FechaHora {
    int anio = 1970, mes = 1, dia = 1, hora = 0, minuto = 0, segundo = 0;
};

class Reloj {
  public:
    virtual ~Reloj() = default;
    virtual FechaHora local() const = 0;  // wall clock in the user's zone
    virtual std::chrono::system_clock::time_point ahora() const = 0;
};

std::unique_ptr<Reloj> crearReloj();
FechaHora aLocal(std::chrono::system_clock::time_point instante);

// Currency digits of the user's locale; nothing when the locale does not tell.
std::optional<int> digitosMonedaLocal();

}  // namespace tarvoline::platform
