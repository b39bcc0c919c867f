// The controls of the main window: where they stand, and which routine each of them calls.
#include <QAction>
#include <QFontMetrics>
#include <QLabel>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "ui/barra_herramientas.h"
#include "ui/buscador.h"
#include "ui/copia_seg.h"
#include "ui/enlace_texto.h"
#include "ui/iconos.h"
#include "ui/menus.h"
#include "ui/panel_lateral.h"
#include "ui/panel_transferencia.h"
#include "ui/rejilla.h"
#include "ui/texto_qt.h"
#include "workflows/descargas.h"
#include "workflows/lista.h"
#include "workflows/listados.h"
#include "workflows/panel.h"

namespace tarvoline::ui {

namespace {

constexpr int textoCapacidadSuperada = 2249;

}  // namespace

void CopiaSeg::construir() {
    setWindowTitle("Tarvoline");
    Toolbar2_ = new BarraHerramientas(vista_, palabras_, this);
    addToolBar(Toolbar2_);
    crearToolbar1();
    menus_ = new Menus(*this, *Toolbar2_, vista_, palabras_);
    setCentralWidget(crearCentro());
    crearLista();
    crearPie();
    const QFontMetrics letra(font());
    const QSize deseado(letra.averageCharWidth() * 170, letra.height() * 50);
    resize(deseado.boundedTo(screen()->availableSize() * 9 / 10));
}

// Part of the layout only: its buttons answer nothing, so it is never on show.
void CopiaSeg::crearToolbar1() {
    constexpr std::array<std::pair<int, const char*>, 6> botones = {{{65, "Cambiar de Usuario"},
                                                                     {135, "Subir empresas pendientes"},
                                                                     {134, "Subir una empresa"},
                                                                     {124, "Subir ficheros personal"},
                                                                     {35, " Calcular Espacio Ocupado"},
                                                                     {12, "Configuración"}}};
    auto* barra = new QToolBar(this);
    barra->setObjectName("Toolbar1");
    for (const auto& [numero, ayuda] : botones) {
        auto* accion = barra->addAction(icono(QString::number(numero)), QString());
        accion->setObjectName(QString("Toolbar1(%1)").arg(numero));
        accion->setToolTip(QString::fromUtf8(ayuda));
    }
    barra->toggleViewAction()->setVisible(false);
    barra->hide();
}

QWidget* CopiaSeg::crearCentro() {
    auto* centro = new QWidget(this);
    lateral_ = new PanelLateral(vista_, palabras_, aQt(entorno_.texto(textoCapacidadSuperada)), centro);
    fx1_ = new Rejilla(vista_.fx1, centro);
    fx1_->setAccessibleName(palabras_("Lista de copias", "List of copies"));
    fx1_->setAccessibleDescription(
        palabras_("Intro descarga y abre; Supr borra lo elegido sin preguntar; botón derecho ordena",
                  "Enter downloads and opens; Delete deletes what is chosen without a question; "
                  "the right button sorts"));
    buscador_ = new Buscador(vista_.fx1, *fx1_, palabras_, centro);
    transferencia_ = new PanelTransferencia(vista_, palabras_, centro);
    auto* derecha = new QVBoxLayout;
    derecha->addWidget(buscador_);
    derecha->addWidget(fx1_, 1);
    derecha->addWidget(transferencia_);
    auto* fila = new QHBoxLayout(centro);
    fila->addWidget(lateral_);
    fila->addLayout(derecha, 1);
    return centro;
}

// The file list lies behind the grid; nobody sees it, but it is there to be clicked by whoever drives the
// window from outside.
void CopiaSeg::crearLista() {
    archivos_ = new QStringListModel(this);
    List1_ = new QListView(centralWidget());
    List1_->setObjectName("List1");
    List1_->setModel(archivos_);
    List1_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    List1_->setUniformItemSizes(true);
    List1_->setAccessibleName(palabras_("Archivos", "Files"));
    List1_->setAccessibleDescription(palabras_("Un clic descarga y abre", "A click downloads and opens"));
    List1_->hide();
}

void CopiaSeg::crearPie() {
    Label4_ = new EnlaceTexto("Label4", this);
    Label4_->setText("Veldorix Online");
    Label4_->setToolTip(
        palabras_("Acceda a VELDORIX ONLINE desde aqui...", "Go to VELDORIX ONLINE from here..."));
    Label6_ = new EnlaceTexto("Label6", this);
    versionlb_ = new QLabel(this);
    versionlb_->setObjectName("versionlb");
    for (auto* etiqueta : {Label4_, Label6_}) {
        etiqueta->setAccessibleDescription(palabras_("Intro lo abre", "Enter opens it"));
        statusBar()->addWidget(etiqueta);
    }
    statusBar()->addPermanentWidget(versionlb_);
}

void CopiaSeg::conectar() {
    const auto boton = [this](int numero) { pedir([=, this] { ventana_.ButtonClick(numero); }); };
    connect(Toolbar2_, &BarraHerramientas::botonPulsado, this, boton);
    connect(transferencia_, &PanelTransferencia::detenerPedido, this,
            [this] { ejecutar([this] { ventana_.ButtonClick(workflows::boton::detener); }); });
    connect(Toolbar2_, &BarraHerramientas::vistaElegida, this,
            [this](int entrada) { pedir([=, this] { ventana_.elegirVista(entrada); }); });
    const auto opcion = [this](int indice) {
        pedir([=, this] { ventana_.flujos().listados().Option1_Click(indice); });
    };
    connect(lateral_, &PanelLateral::opcionElegida, this, opcion);
    connect(menus_, &Menus::opcionElegida, this, opcion);
    connect(lateral_, &PanelLateral::carpetaElegida, this, [this](int indice) {
        pedir([=, this] { ventana_.flujos().listados().carpetas_Click(indice); });
    });
    connect(lateral_, &PanelLateral::imagenPulsada, this, [this](int indice) {
        lateral_->normalizar();
        pedir([=, this] { ventana_.Picture2_Click(static_cast<workflows::Imagen>(indice)); });
    });
    const auto informe = [this] { pedir([this] { ventana_.Imgcapacidad_Click(); }); };
    connect(&lateral_->almacen(), &PanelAlmacen::informePedido, this, informe);
    connect(menus_, &Menus::informePedido, this, informe);
    const auto pagina = [this] { ejecutar([this] { ventana_.Label4_Click(); }); };
    connect(Label4_, &EnlaceTexto::clicked, this, pagina);
    connect(menus_, &Menus::paginaPedida, this, pagina);
    connect(Label6_, &EnlaceTexto::clicked, this, [this] { pedir([this] { ventana_.Label6_Click(); }); });
    conectarLista();
    conectarMenus();
}

void CopiaSeg::conectarLista() {
    connect(fx1_, &Rejilla::teclaPulsada, this, [this](int tecla) {
        const auto pulsar = [=, this] { ventana_.flujos().lista().fx1_KeyDown(tecla); };
        // A key that deletes nothing is no reason to give up the sizes.
        tecla == workflows::teclaSuprimir ? pedir(pulsar) : ejecutar(pulsar);
    });
    connect(fx1_, &Rejilla::abrirPedido, this,
            [this] { pedir([this] { ventana_.flujos().descargas().fx1_DblClick(); }); });
    connect(fx1_, &Rejilla::menuPedido, this, [this](QPoint lugar) { menus_->edicion().popup(lugar); });
    connect(List1_, &QListView::clicked, this, [this](const QModelIndex& lugar) {
        const int indice = lugar.row();
        pedir([=, this] { ventana_.flujos().descargas().List1_Click(indice); });
    });
    const auto ordenar = [this](int indice) {
        if (pendiente_ || (vista_.ocupada && !ventana_.flujos().listados().midiendoTamanos())) {
            return;  // the rows stand still under a work that goes along them
        }
        ejecutar([=, this] { ventana_.flujos().lista().Ordenar_Click(indice); });
    };
    connect(fx1_, &Rejilla::ordenPedido, this, ordenar);
    connect(menus_, &Menus::ordenPedido, this, ordenar);
}

void CopiaSeg::conectarMenus() {
    connect(menus_, &Menus::botonPulsado, this,
            [this](int numero) { pedir([=, this] { ventana_.ButtonClick(numero, 1); }); });
    connect(menus_, &Menus::buscarPedido, buscador_, &Buscador::abrir);
    connect(menus_, &Menus::buscarSiguientePedido, buscador_, [this] { buscador_->buscar(1); });
    connect(menus_, &Menus::refrescarPedido, this, [this] {
        pedir([this] {
            auto& flujos = ventana_.flujos();
            flujos.panel().entrada([&] { flujos.listados().RefrescarVista(); });
        });
    });
    connect(menus_, &Menus::salirPedido, this, &CopiaSeg::close);
}

}  // namespace tarvoline::ui
