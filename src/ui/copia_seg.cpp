#include "ui/copia_seg.h"

namespace tarvoline::ui {

CopiaSeg::CopiaSeg(workflows::VentanaPrincipal&, std::function<void()>) {}

CopiaSeg::~CopiaSeg() = default;

void CopiaSeg::mostrarModal() {}

}  // namespace tarvoline::ui
