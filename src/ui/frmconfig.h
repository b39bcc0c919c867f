// The configuration window: paints and edits a workflows::FormularioConfiguracion.
#pragma once

#include <QDialog>

#include "workflows/formulario_configuracion.h"

namespace tarvoline::ui {

class frmconfig : public QDialog {
    Q_OBJECT

  public:
    // `formulario` is filled already, borrowed, and outlives the dialog.
    frmconfig(workflows::FormularioConfiguracion& formulario, core::Entorno& entorno, QWidget* padre);
};

}  // namespace tarvoline::ui
