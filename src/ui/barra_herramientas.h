// Toolbar2: the numbered buttons of the view model, and the view selector among them.
#pragma once

#include <QAction>
#include <QComboBox>
#include <QToolBar>
#include <map>
#include <vector>

#include "core/vista.h"
#include "ui/palabras.h"

namespace tarvoline::ui {

class BarraHerramientas : public QToolBar {
    Q_OBJECT

  public:
    // `vista` is borrowed.
    BarraHerramientas(const core::Vista& vista, const Palabras& palabras, QWidget* padre);

    // Its buttons and their help texts as the view model has them now.
    void pintarRotulos();
    void pintarOpcion();
    void pintarBloqueo();
    // The action of a number, made when there is none yet: the menus show the same ones.
    QAction& accion(int numero);

  signals:
    void botonPulsado(int numero);
    void vistaElegida(int entrada);  // of core::nombresVista

  private:
    void crearSelector();
    void rehacer();
    void ayudar(std::size_t lugar);

    const core::Vista& vista_;
    Palabras palabras_;
    QComboBox* selector_;
    QAction* accionSelector_ = nullptr;
    std::map<int, QAction*> acciones_;
    std::vector<int> botones_;  // what stands on the bar
};

}  // namespace tarvoline::ui
