// The gauge routine over the view model.
#pragma once

#include <optional>

#include "core/estado.h"
#include "core/vista.h"

namespace tarvoline::core {

// Owners of the gauge in Estado::gModoGauge.
namespace modo_gauge {
inline constexpr int ninguno = 999;  // Barra returns at once
inline constexpr int ventanaPrincipal = 101;
inline constexpr int pidiendoClave = 100;
inline constexpr int sinDuenio = 0;
inline constexpr int limpiarPrimero = 998;
inline constexpr int finVisible = 9999;  // the end call leaves the gauge on show
}  // namespace modo_gauge

// `valor` 0 ends, -1 starts, any other value is a count of `total`: `100 / (total / valor)` cut to a whole
// number, at most 100. Without a total, or with 0, it draws 0 %; so does every draw with limpiarPrimero.
// Other modes (1, 60 to 69) belong to programs whose gauge has a window of its own; here they draw on the
// main window's gauge like sinDuenio.
void Barra(Estado& estado, Vista& vista, double valor, std::optional<double> total = std::nullopt);

}  // namespace tarvoline::core
