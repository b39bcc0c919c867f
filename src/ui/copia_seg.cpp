#include "ui/copia_seg.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>

#include "ui/barra_herramientas.h"
#include "ui/buscador.h"
#include "ui/enlace_texto.h"
#include "ui/integracion.h"
#include "ui/menus.h"
#include "ui/panel_lateral.h"
#include "ui/panel_transferencia.h"
#include "ui/rejilla.h"
#include "ui/texto_qt.h"
#include "workflows/listados.h"
#include "workflows/panel.h"

namespace tarvoline::ui {

CopiaSeg::CopiaSeg(workflows::VentanaPrincipal& ventana, std::function<void()> alCerrarTrabajando)
    : ventana_(ventana),
      entorno_(ventana.flujos().entorno()),
      vista_(entorno_.vista),
      alCerrarTrabajando_(std::move(alCerrarTrabajando)),
      palabras_(core::idiomaEspanol(entorno_)) {
    setObjectName("CopiaSeg");
    construir();
    conectar();
    pintarTodo();
    integracion_ = std::make_unique<Integracion>(vista_, *this, palabras_);
    vista_.alCambiar = [this](core::Parte parte) {
        pintar(parte);
        integracion_->alCambiar(parte);
    };
}

CopiaSeg::~CopiaSeg() {
    vista_.alCambiar = {};
}

void CopiaSeg::mostrarModal() {
    cerrada_ = false;
    fin_.reset();
    show();
    fx1_->setFocus(Qt::OtherFocusReason);
    // The window stands on the screen before the first call of the service keeps it waiting.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    ejecutar([this] { ventana_.activar(); });
    if (!cerrada_) {
        bucle_.exec();
    }
    if (fin_) {
        throw core::FinDePrograma(*fin_);
    }
}

// No question and no look at what is under way. Work that is on the stack has to unwind first: its next turn
// ends it.
void CopiaSeg::closeEvent(QCloseEvent* evento) {
    cerrada_ = true;
    if (profundidad_ > 0) {
        alCerrarTrabajando_();
    } else {
        bucle_.quit();
    }
    evento->accept();
}

void CopiaSeg::ejecutar(const std::function<void()>& paso) {
    ++profundidad_;
    try {
        paso();
    } catch (const core::FinDePrograma& fin) {
        fin_ = fin_.value_or(fin);
        if (profundidad_ > 1) {
            alCerrarTrabajando_();
        }
    } catch (const std::exception& error) {
        entorno_.registro.error(error.what());
        entorno_.escritorio.Mensaje(
            {error.what(), core::Icono::exclamacion, std::string(workflows::tituloPrograma)});
    }
    --profundidad_;
    if (profundidad_ == 0) {
        trasTrabajo();
    }
}

void CopiaSeg::pedir(std::function<void()> paso) {
    auto& listados = ventana_.flujos().listados();
    if (listados.midiendoTamanos()) {
        listados.dejarDeMedir();
        // What is asked for acts on what is chosen now: until it runs nothing else is chosen or asked for.
        if (!pendiente_) {
            pendiente_ = std::move(paso);
            pintarBloqueo();
        }
        return;
    }
    ejecutar(paso);
}

void CopiaSeg::trasTrabajo() {
    if (fin_ || cerrada_) {
        close();
        bucle_.quit();
        return;
    }
    // A choice that was refused goes back to what holds.
    pintar(core::Parte::opcion);
    pintar(core::Parte::carpetas);
    if (const auto paso = std::exchange(pendiente_, nullptr)) {
        pintarBloqueo();
        ejecutar(paso);
    } else if (auto& listados = ventana_.flujos().listados(); listados.quedanTamanos()) {
        ejecutar([&] { listados.retomarTamanos(); });
    }
}

void CopiaSeg::pintarTodo() {
    for (const auto parte :
         {core::Parte::rotulos, core::Parte::titulo, core::Parte::opcion, core::Parte::carpetas,
          core::Parte::lista, core::Parte::rejilla, core::Parte::etiquetas, core::Parte::panel,
          core::Parte::medidor, core::Parte::transferencia, core::Parte::bloqueo}) {
        pintar(parte);
    }
}

void CopiaSeg::pintar(core::Parte parte) {
    switch (parte) {
        case core::Parte::rejilla:
            pintarRejilla();
            break;
        case core::Parte::fila:
            fx1_->refrescarFila(vista_.filaCambiada);
            break;
        case core::Parte::carpetas:
            lateral_->pintarCarpetas();
            break;
        case core::Parte::lista: {
            QStringList nombres;
            for (const auto& nombre : vista_.List1) {
                nombres << aQt(nombre);
            }
            archivos_->setStringList(nombres);
            List1_->setCurrentIndex(archivos_->index(vista_.elegidoList1));
            break;
        }
        case core::Parte::opcion:
            lateral_->pintarOpcion();
            Toolbar2_->pintarOpcion();
            menus_->pintarOpcion();
            break;
        case core::Parte::etiquetas:
            transferencia_->pintarEtiquetas();
            lateral_->almacen().pintarEtiquetas();
            break;
        case core::Parte::medidor:
            transferencia_->pintarMedidor();
            break;
        case core::Parte::panel:
            transferencia_->pintarPanel();
            break;
        case core::Parte::bloqueo:
            pintarBloqueo();
            break;
        case core::Parte::titulo:
            setWindowTitle(aQt(vista_.titulo));
            break;
        case core::Parte::transferencia:
            transferencia_->pintarTransferencia();
            break;
        case core::Parte::rotulos:
            pintarRotulos();
            break;
    }
}

void CopiaSeg::pintarRejilla() {
    const bool historico = vista_.Option1 == core::Opcion::historico;
    fx1_->refrescar(!historico);
    const auto vacia = historico ? palabras_("Aún no hay operaciones", "No operations yet")
                                 : palabras_("No hay archivos en esta carpeta", "No files in this folder");
    fx1_->ponerTextoVacio(vista_.listaLeida ? vacia : palabras_("Lista no disponible", "List not available"));
}

void CopiaSeg::pintarBloqueo() {
    const bool libre = vista_.habilitada && !vista_.bloqueada && !pendiente_;
    // What gets locked loses the keyboard; it has it back when the lock goes.
    if (!libre && fx1_->isEnabled()) {
        focoAntesDelBloqueo_ = focusWidget();
    }
    Toolbar2_->pintarBloqueo();
    menus_->pintarBloqueo();
    lateral_->pintarBloqueo();
    transferencia_->pintarPanel();
    fx1_->setEnabled(libre);
    buscador_->setEnabled(libre);
    List1_->setEnabled(libre);
    Label4_->setEnabled(vista_.habilitada);
    Label6_->setEnabled(vista_.habilitada);
    versionlb_->setEnabled(vista_.habilitada);
    if (libre && focoAntesDelBloqueo_) {
        focoAntesDelBloqueo_->setFocus(Qt::OtherFocusReason);
        focoAntesDelBloqueo_.clear();
    }
}

void CopiaSeg::pintarRotulos() {
    Toolbar2_->pintarRotulos();
    menus_->pintarRotulos();
    lateral_->pintarRotulos();
    transferencia_->pintarRotulos();
    Label6_->setText(aQt(vista_.rotulos.Label6));
    versionlb_->setText(aQt(vista_.rotulos.versionlb));
    versionlb_->setAccessibleName(palabras_("Versión ", "Version ") + versionlb_->text());
}

}  // namespace tarvoline::ui
