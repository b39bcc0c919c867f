// The terms window.
#pragma once

#include <QDialog>

#include "workflows/terminos.h"

namespace tarvoline::ui {

class Form1 : public QDialog {
    Q_OBJECT

  public:
    // Throws platform::ErrorArchivo when the terms file is missing. `terminos` is borrowed.
    Form1(workflows::Terminos& terminos, core::Entorno& entorno, QWidget* padre);
};

}  // namespace tarvoline::ui
