// The menu bar, which holds every command once more for the keyboard, and the pop-up menu of the grid.
#pragma once

#include <QAction>
#include <QActionGroup>
#include <QMainWindow>
#include <QMenu>
#include <array>
#include <vector>

#include "core/vista.h"
#include "ui/barra_herramientas.h"
#include "ui/palabras.h"

namespace tarvoline::ui {

class Menus : public QObject {
    Q_OBJECT

  public:
    // `vista` is borrowed; the menus belong to `ventana`.
    Menus(QMainWindow& ventana, BarraHerramientas& barra, const core::Vista& vista, const Palabras& palabras);

    void pintarRotulos();
    void pintarOpcion();
    void pintarBloqueo();
    // The grid's own menu: find, and the orders.
    QMenu& edicion() { return *edicion_; }

  signals:
    void opcionElegida(int indice);  // of Option1
    void ordenPedido(int indice);
    void buscarPedido();
    void buscarSiguientePedido();
    void refrescarPedido();
    void informePedido();
    void paginaPedida();
    void botonPulsado(int numero);  // of ButtonClick, for those that stand on no bar
    void salirPedido();

  private:
    QMenu* menu(const char* nombre, const QString& titulo);
    QAction* orden(const char* nombre, const QString& texto, const QKeySequence& atajo,
                   void (Menus::*senal)());
    void crearEdicion();
    void crearCopias();
    void crearVer();
    void crearHerramientas();
    void crearAyuda();

    QMainWindow& ventana_;
    BarraHerramientas& barra_;
    const core::Vista& vista_;
    Palabras palabras_;
    QMenu* edicion_ = nullptr;
    QMenu* ordenar_ = nullptr;
    std::array<QAction*, 3> Ordenar_{};
    std::array<QAction*, 4> vistas_{};
    QAction* buscar_ = nullptr;
    QAction* pagina_ = nullptr;
    QAction* informe_ = nullptr;
    std::vector<QAction*> deLaLista_;  // those that go with the grid's lock
};

}  // namespace tarvoline::ui
