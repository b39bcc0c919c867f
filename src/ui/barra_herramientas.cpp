#include "ui/barra_herramientas.h"

#include <algorithm>

#include "ui/iconos.h"
#include "ui/texto_qt.h"
#include "workflows/ventana_principal.h"

namespace tarvoline::ui {

namespace {

namespace boton = workflows::boton;

QKeySequence atajoDe(int numero) {
    switch (numero) {
        case boton::cambiarUsuario:
            return {Qt::CTRL | Qt::Key_U};
        case boton::nuevoUsuario:
            return {Qt::CTRL | Qt::SHIFT | Qt::Key_U};
        case boton::subirEmpresa:
            return {Qt::CTRL | Qt::Key_E};
        case boton::subirPendientes:
            return {Qt::CTRL | Qt::SHIFT | Qt::Key_E};
        case boton::subirPersonal:
            return QKeySequence::Open;
        case boton::configuracion:
            return {Qt::CTRL | Qt::Key_Comma};
        case boton::restaurar:
            return {Qt::CTRL | Qt::Key_R};
        case boton::descargar:
            return QKeySequence::Save;
        case boton::eliminar:
            return {Qt::CTRL | Qt::Key_Delete};
        case boton::terminos:
            return {Qt::CTRL | Qt::Key_T};
        case boton::soporte:
            return {Qt::SHIFT | Qt::Key_F1};
        case boton::manual:
            return QKeySequence::HelpContents;
        default:
            return {};
    }
}

}  // namespace

BarraHerramientas::BarraHerramientas(const core::Vista& vista, const Palabras& palabras, QWidget* padre)
    : QToolBar(padre), vista_(vista), palabras_(palabras), selector_(new QComboBox) {
    setObjectName("Toolbar2");
    setWindowTitle(palabras_("Barra de herramientas", "Toolbar"));
    setAccessibleName(windowTitle());
    setAccessibleDescription(palabras_("Todas las órdenes del programa", "All commands of the program"));
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    crearSelector();
}

void BarraHerramientas::crearSelector() {
    selector_->setObjectName("Toolbar2(-3)");
    selector_->setAccessibleName(palabras_("Vista", "View"));
    selector_->setAccessibleDescription(
        palabras_("Elige lo que muestra la lista", "Chooses what the list shows"));
    selector_->setToolTip(selector_->accessibleDescription());
    for (const auto nombre : core::nombresVista) {
        selector_->addItem(aQt(nombre));
    }
    connect(selector_, &QComboBox::activated, this, &BarraHerramientas::vistaElegida);
    accionSelector_ = addWidget(selector_);
}

QAction& BarraHerramientas::accion(int numero) {
    auto*& accion = acciones_[numero];
    if (accion == nullptr) {
        accion = new QAction(icono(QString::number(numero)), {}, this);
        accion->setObjectName(QString("Toolbar2(%1)").arg(numero));
        accion->setShortcut(atajoDe(numero));
        connect(accion, &QAction::triggered, this, [this, numero] { emit botonPulsado(numero); });
    }
    return *accion;
}

void BarraHerramientas::pintarRotulos() {
    if (botones_ != vista_.rotulos.botonesToolbar2) {
        rehacer();
    }
    for (std::size_t i = 0; i < botones_.size(); ++i) {
        ayudar(i);
    }
}

void BarraHerramientas::rehacer() {
    for (auto* accion : actions()) {
        removeAction(accion);
        if (accion->isSeparator()) {
            delete accion;
        }
    }
    botones_ = vista_.rotulos.botonesToolbar2;
    for (const int numero : botones_) {
        if (numero == boton::selectorVista) {
            addAction(accionSelector_);
        } else if (numero < 0) {
            addSeparator();
        } else {
            addAction(&accion(numero));
        }
    }
}

void BarraHerramientas::ayudar(std::size_t lugar) {
    const int numero = botones_[lugar];
    if (numero < 0 || lugar >= vista_.rotulos.ayudasToolbar2.size()) {
        return;
    }
    auto& suya = accion(numero);
    const auto ayuda = aQt(vista_.rotulos.ayudasToolbar2[lugar]).trimmed();
    const auto atajo = suya.shortcut().toString(QKeySequence::NativeText);
    suya.setText(ayuda);
    suya.setToolTip(atajo.isEmpty() ? ayuda : QString("%1 (%2)").arg(ayuda, atajo));
    if (auto* control = widgetForAction(&suya)) {
        control->setObjectName(suya.objectName());
        control->setAccessibleName(ayuda);
        control->setAccessibleDescription(suya.toolTip());
        control->setFocusPolicy(Qt::TabFocus);
    }
}

void BarraHerramientas::pintarOpcion() {
    const auto* vista = std::find(core::opcionDeVista.begin(), core::opcionDeVista.end(), vista_.Option1);
    selector_->setCurrentIndex(static_cast<int>(vista - core::opcionDeVista.begin()));
}

void BarraHerramientas::pintarBloqueo() {
    setEnabled(!vista_.bloqueada);
    selector_->setEnabled(vista_.habilitada && !vista_.bloqueada);
    for (auto& [numero, accion] : acciones_) {
        accion->setEnabled(!vista_.bloqueada);
    }
}

}  // namespace tarvoline::ui
