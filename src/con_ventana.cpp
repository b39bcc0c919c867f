#include "ui/programa.h"
#include "ventana.h"

namespace tarvoline {

std::optional<int> ejecutarConVentana(int argc, char** argv, const std::string& ordenes) {
    return ui::ejecutar(argc, argv, ordenes);
}

}  // namespace tarvoline
