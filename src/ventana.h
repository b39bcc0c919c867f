// The door between the program's entry and its window. One of two sources stands behind it: the build has a
// window (con_ventana.cpp), or it has none (sin_ventana.cpp).
#pragma once

#include <optional>
#include <string>

namespace tarvoline {

// Runs the program with its window until that is closed; the exit code. Nothing when this build has no
// window, or there is no display to show one on.
std::optional<int> ejecutarConVentana(int argc, char** argv, const std::string& ordenes);

}  // namespace tarvoline
