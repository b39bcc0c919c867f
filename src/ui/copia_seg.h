// The main window: paints core::Vista and passes what the person does to workflows::VentanaPrincipal.
#pragma once

#include <QMainWindow>
#include <functional>

#include "core/entorno.h"
#include "workflows/ventana_principal.h"

namespace tarvoline::ui {

class CopiaSeg : public QMainWindow {
    Q_OBJECT

  public:
    // `ventana` is borrowed and outlives this object. The view's change notice is taken for as long as it
    // lives. `alCerrarTrabajando` is called when the person closes the window while a workflow runs: it must
    // make the next turn end the program.
    CopiaSeg(workflows::VentanaPrincipal& ventana, std::function<void()> alCerrarTrabajando);
    ~CopiaSeg() override;

    // Shows the window, runs the activation step and returns when the window has closed. Throws
    // core::FinDePrograma when a workflow ended the program.
    void mostrarModal();
};

}  // namespace tarvoline::ui
