#include "ui/frmconfig.h"

namespace tarvoline::ui {

frmconfig::frmconfig(workflows::FormularioConfiguracion&, core::Entorno&, QWidget* padre) : QDialog(padre) {}

}  // namespace tarvoline::ui
