#include "ui/menus.h"

#include <QMenuBar>

#include "ui/iconos.h"
#include "ui/texto_qt.h"
#include "workflows/ventana_principal.h"

namespace tarvoline::ui {

namespace {

namespace boton = workflows::boton;

// Gives each entry of a menu a letter of its own, the first of its text that none before it has taken.
void ponerLetras(const QMenu& menu) {
    QString tomadas;
    for (auto* accion : menu.actions()) {
        auto texto = accion->text().remove('&');
        for (qsizetype i = 0; i < texto.size(); ++i) {
            const auto letra = texto[i].toLower();
            if (letra.isLetterOrNumber() && !tomadas.contains(letra)) {
                tomadas += letra;
                texto.insert(i, '&');
                break;
            }
        }
        accion->setText(texto);
    }
}

}  // namespace

Menus::Menus(QMainWindow& ventana, BarraHerramientas& barra, const core::Vista& vista,
             const Palabras& palabras)
    : QObject(&ventana), ventana_(ventana), barra_(barra), vista_(vista), palabras_(palabras) {
    ventana_.menuBar()->setObjectName("main");
    ventana_.menuBar()->setAccessibleName(palabras_("Menú", "Menu"));
    crearEdicion();
    crearCopias();
    crearVer();
    crearHerramientas();
    crearAyuda();
}

QMenu* Menus::menu(const char* nombre, const QString& titulo) {
    auto* menu = ventana_.menuBar()->addMenu(titulo);
    menu->setObjectName(nombre);
    connect(menu, &QMenu::aboutToShow, menu, [menu] { ponerLetras(*menu); });
    return menu;
}

QAction* Menus::orden(const char* nombre, const QString& texto, const QKeySequence& atajo,
                      void (Menus::*senal)()) {
    auto* accion = new QAction(texto, this);
    accion->setObjectName(nombre);
    accion->setShortcut(atajo);
    connect(accion, &QAction::triggered, this, senal);
    ventana_.addAction(accion);
    return accion;
}

void Menus::crearEdicion() {
    edicion_ = new QMenu(palabras_("&Edicion", "&Edit"), &ventana_);
    edicion_->setObjectName("main(1)");
    buscar_ = orden("edicion(0)", palabras_("Buscar", "Find"), QKeySequence::Find, &Menus::buscarPedido);
    edicion_->addAction(buscar_);
    edicion_->addSeparator()->setObjectName("edicion(1)");
    ordenar_ = edicion_->addMenu("Ordenar");
    ordenar_->setObjectName("edicion(2)");
    for (int i = 0; i < static_cast<int>(Ordenar_.size()); ++i) {
        auto* accion = ordenar_->addAction(QString());
        accion->setObjectName(QString("Ordenar(%1)").arg(i));
        connect(accion, &QAction::triggered, this, [this, i] { emit ordenPedido(i); });
        Ordenar_[static_cast<std::size_t>(i)] = accion;
        deLaLista_.push_back(accion);
    }
    deLaLista_.push_back(buscar_);
    for (auto* suyo : {edicion_, ordenar_}) {
        connect(suyo, &QMenu::aboutToShow, suyo, [suyo] { ponerLetras(*suyo); });
    }
}

void Menus::crearCopias() {
    auto* copias = menu("menuCopias", palabras_("Cop&ias", "&Backups"));
    for (const int numero :
         {boton::cambiarUsuario, boton::nuevoUsuario, boton::separador, boton::subirEmpresa,
          boton::subirPendientes, boton::subirPersonal, boton::separador, boton::restaurar, boton::descargar,
          boton::eliminar, boton::separador}) {
        if (numero == boton::separador) {
            copias->addSeparator();
        } else {
            copias->addAction(&barra_.accion(numero));
        }
    }
    copias->addAction(
        orden("salir", palabras_("Salir", "Quit"), {Qt::CTRL | Qt::Key_Q}, &Menus::salirPedido));
}

void Menus::crearVer() {
    auto* ver = menu("menuVer", palabras_("&Ver", "&View"));
    auto* grupo = new QActionGroup(this);
    for (std::size_t i = 0; i < vistas_.size(); ++i) {
        auto* accion = ver->addAction(aQt(core::nombresVista[i]));
        accion->setObjectName(QString("vista(%1)").arg(i));
        accion->setCheckable(true);
        accion->setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + static_cast<int>(i))));
        grupo->addAction(accion);
        const int indice = static_cast<int>(core::opcionDeVista[i]);
        connect(accion, &QAction::triggered, this, [this, indice] { emit opcionElegida(indice); });
        vistas_[i] = accion;
        deLaLista_.push_back(accion);
    }
    ver->addSeparator();
    ver->addMenu(ordenar_);
    ver->addAction(buscar_);
    auto* siguiente = orden("buscarSiguiente", palabras_("Buscar siguiente", "Find next"),
                            QKeySequence::FindNext, &Menus::buscarSiguientePedido);
    ver->addAction(siguiente);
    auto* refrescar = orden("refrescar", palabras_("Actualizar", "Refresh"), QKeySequence::Refresh,
                            &Menus::refrescarPedido);
    ver->addAction(refrescar);
    deLaLista_.insert(deLaLista_.end(), {siguiente, refrescar});
}

void Menus::crearHerramientas() {
    auto* herramientas = menu("menuHerramientas", palabras_("&Herramientas", "&Tools"));
    herramientas->addAction(&barra_.accion(boton::configuracion));
    herramientas->addSeparator();
    informe_ = orden("informe", {}, {Qt::CTRL | Qt::Key_I}, &Menus::informePedido);
    informe_->setIcon(icono("capacidad"));
    herramientas->addAction(informe_);
    const auto sinBarra = [&](int numero, const QString& texto) {
        auto* accion = herramientas->addAction(icono(QString::number(numero)), texto);
        accion->setObjectName(QString("ButtonClick(%1)").arg(numero));
        connect(accion, &QAction::triggered, this, [this, numero] { emit botonPulsado(numero); });
        deLaLista_.push_back(accion);
    };
    sinBarra(boton::calcularEspacio,
             palabras_("Calcular espacio de la selección", "Measure the space of the selection"));
    sinBarra(boton::vaciarTemporal, palabras_("Vaciar la carpeta temporal", "Empty the temporary folder"));
    deLaLista_.push_back(informe_);
}

void Menus::crearAyuda() {
    auto* ayuda = menu("menuAyuda", palabras_("A&yuda", "&Help"));
    for (const int numero : {boton::manual, boton::asistenciaRemota, boton::soporte, boton::calidad,
                             boton::separador, boton::online}) {
        if (numero == boton::separador) {
            ayuda->addSeparator();
        } else {
            ayuda->addAction(&barra_.accion(numero));
        }
    }
    pagina_ = orden("pagina", palabras_("Página de Veldorix Online", "Page of Veldorix Online"), {},
                    &Menus::paginaPedida);
    ayuda->addAction(pagina_);
    ayuda->addAction(&barra_.accion(boton::terminos));
}

void Menus::pintarRotulos() {
    ordenar_->setTitle(aQt(vista_.rotulos.edicion));
    for (std::size_t i = 0; i < Ordenar_.size(); ++i) {
        Ordenar_[i]->setText(aQt(vista_.rotulos.Ordenar[i]));
    }
    informe_->setText(aQt(vista_.rotulos.ayudaCapacidad));
}

void Menus::pintarOpcion() {
    for (std::size_t i = 0; i < vistas_.size(); ++i) {
        vistas_[i]->setChecked(core::opcionDeVista[i] == vista_.Option1);
    }
}

void Menus::pintarBloqueo() {
    for (auto* accion : deLaLista_) {
        accion->setEnabled(vista_.habilitada && !vista_.bloqueada);
    }
    pagina_->setEnabled(vista_.habilitada);
}

}  // namespace tarvoline::ui
