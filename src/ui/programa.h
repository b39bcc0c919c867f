// The program with its window: builds the toolkit's application, the desktop, the workflows and the main
// window, and runs the start.
#pragma once

#include <optional>
#include <string>

namespace tarvoline::ui {

// The exit code; nothing when there is no display.
std::optional<int> ejecutar(int argc, char** argv, const std::string& ordenes);

}  // namespace tarvoline::ui
