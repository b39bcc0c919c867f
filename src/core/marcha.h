// How a transfer gets on, in words.
#pragma once

#include <string>

#include "core/vista.h"

namespace tarvoline::core {

// From this many pieces on its speed says something about the rest.
inline constexpr int piezasParaEstimar = 3;
// A call that takes longer than this is told. In seconds.
inline constexpr double esperaCallada = 2;

// "1,20 MB/s, quedan 0:45"; "tiempo restante desconocido" at the beginning; how long the service has not
// answered once that is longer than usual. "" when no transfer runs. `ahora` in seconds of the steady clock.
std::string textoMarcha(const Transferencia& transferencia, double ahora, bool espanol);

}  // namespace tarvoline::core
