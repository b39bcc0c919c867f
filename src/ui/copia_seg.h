// The main window: paints core::Vista and passes what the person does to workflows::VentanaPrincipal.
#pragma once

#include <QEventLoop>
#include <QLabel>
#include <QListView>
#include <QMainWindow>
#include <QPointer>
#include <QStringListModel>
#include <functional>
#include <memory>
#include <optional>

#include "core/entorno.h"
#include "ui/palabras.h"
#include "workflows/ventana_principal.h"

namespace tarvoline::ui {

class BarraHerramientas;
class Buscador;
class EnlaceTexto;
class Integracion;
class Menus;
class PanelLateral;
class PanelTransferencia;
class Rejilla;

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

  protected:
    void closeEvent(QCloseEvent* evento) override;

  private:
    void construir();
    void crearToolbar1();
    QWidget* crearCentro();
    void crearLista();
    void crearPie();
    void conectar();
    void conectarLista();
    void conectarMenus();

    // Every slot runs its work in here: no exception may cross the toolkit's event loop.
    void ejecutar(const std::function<void()>& paso);
    // The same for what starts a workflow: the sizes of a long list give way to it, and it runs when they
    // have.
    void pedir(std::function<void()> paso);
    void trasTrabajo();
    void pintar(core::Parte parte);
    void pintarTodo();
    void pintarRejilla();
    void pintarBloqueo();
    void pintarRotulos();

    workflows::VentanaPrincipal& ventana_;
    core::Entorno& entorno_;
    core::Vista& vista_;
    std::function<void()> alCerrarTrabajando_;
    Palabras palabras_;

    BarraHerramientas* Toolbar2_ = nullptr;
    Menus* menus_ = nullptr;
    PanelLateral* lateral_ = nullptr;
    Rejilla* fx1_ = nullptr;
    Buscador* buscador_ = nullptr;
    PanelTransferencia* transferencia_ = nullptr;
    QListView* List1_ = nullptr;
    QStringListModel* archivos_ = nullptr;
    EnlaceTexto* Label4_ = nullptr;
    EnlaceTexto* Label6_ = nullptr;
    QLabel* versionlb_ = nullptr;

    std::unique_ptr<Integracion> integracion_;  // what the desktop around the window is told

    QEventLoop bucle_;
    QPointer<QWidget> focoAntesDelBloqueo_;
    std::function<void()> pendiente_;  // asked for while the sizes were being read
    std::optional<core::FinDePrograma> fin_;
    int profundidad_ = 0;  // slots at work, one inside the turn of another
    bool cerrada_ = false;
};

}  // namespace tarvoline::ui
