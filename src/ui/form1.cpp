#include "ui/form1.h"

namespace tarvoline::ui {

Form1::Form1(workflows::Terminos&, core::Entorno&, QWidget* padre) : QDialog(padre) {}

}  // namespace tarvoline::ui
