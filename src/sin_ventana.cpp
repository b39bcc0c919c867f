#include "ventana.h"

namespace tarvoline {

std::optional<int> ejecutarConVentana(int, char**, const std::string&) {
    return std::nullopt;
}

}  // namespace tarvoline
