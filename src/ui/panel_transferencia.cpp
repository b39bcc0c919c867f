#include "ui/panel_transferencia.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QStyle>
#include <chrono>

#include "core/marcha.h"
#include "ui/iconos.h"
#include "ui/texto_qt.h"

namespace tarvoline::ui {

namespace {

constexpr int sinPanel = 99;
constexpr int panelSubida = 1;
constexpr int panelBajada = 2;

QLabel* crearRotulo(const QString& nombre, QLabel* valor, QWidget* padre) {
    auto* rotulo = new QLabel(padre);
    rotulo->setObjectName(nombre);
    rotulo->setBuddy(valor);
    return rotulo;
}

void conservarSitio(QWidget* control) {
    auto politica = control->sizePolicy();
    politica.setRetainSizeWhenHidden(true);
    control->setSizePolicy(politica);
}

}  // namespace

PanelTransferencia::PanelTransferencia(const core::Vista& vista, const Palabras& palabras, QWidget* padre)
    : QFrame(padre),
      vista_(vista),
      palabras_(palabras),
      NombreArchivo_(new EtiquetaCorta("NombreArchivo", this)),
      Tamano_(new EtiquetaCorta("Tamaño", this)),
      Progreso_(new EtiquetaCorta("Progreso", this)),
      marcha_(new EtiquetaCorta("marcha", this)),
      ImgStop_(new QToolButton(this)),
      escape_(new QShortcut(Qt::Key_Escape, this)),
      Gauge1_(new Medidor(this)) {
    setObjectName("Picture3");
    setFrameShape(StyledPanel);
    setAccessibleName(palabras_("Transferencia", "Transfer"));
    setAccessibleDescription(palabras_("Qué se está subiendo, bajando o preparando, y cuánto falta",
                                       "What is being sent, fetched or prepared, and how far it is"));
    Label1_ = crearRotulo("Label1", NombreArchivo_, this);
    Label3_ = crearRotulo("Label3", Tamano_, this);
    Label5_ = crearRotulo("Label5", Progreso_, this);
    crearImagenes();
    colocar();
    reloj_.setInterval(1000);
    connect(&reloj_, &QTimer::timeout, this, &PanelTransferencia::pintarTransferencia);
    connect(ImgStop_, &QToolButton::clicked, this, &PanelTransferencia::detenerPedido);
    // On its own, not the button's: that one would first show itself pressed for a while.
    connect(escape_, &QShortcut::activated, this, &PanelTransferencia::detenerPedido);
    escape_->setEnabled(false);
}

void PanelTransferencia::crearImagenes() {
    const std::array dibujos = {"preparando", "subida", "bajada"};
    const std::array nombres = {palabras_("Preparando", "Preparing"), palabras_("Subiendo", "Sending"),
                                palabras_("Bajando", "Fetching")};
    const int lado = style()->pixelMetric(QStyle::PM_LargeIconSize);
    for (std::size_t i = 0; i < Imgproceso_.size(); ++i) {
        auto* imagen = new QLabel(this);
        imagen->setObjectName(QString("Imgproceso(%1)").arg(i));
        imagen->setPixmap(icono(dibujos[i]).pixmap(QSize(lado, lado), devicePixelRatioF()));
        imagen->setToolTip(nombres[i]);
        imagen->setAccessibleName(nombres[i]);
        imagen->hide();
        Imgproceso_[i] = imagen;
    }
    ImgStop_->setObjectName("ImgStop");
    ImgStop_->setIcon(icono("detener"));
    ImgStop_->setIconSize(QSize(lado, lado) * 3 / 4);
    ImgStop_->setText(palabras_("Parar", "Stop"));
    ImgStop_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    ImgStop_->setToolTip(
        palabras_("Parar Subida/Bajada de documentos", "Stop sending or fetching documents"));
    ImgStop_->setAccessibleName(ImgStop_->text());
    ImgStop_->setAccessibleDescription(ImgStop_->toolTip());
    ImgStop_->setFocusPolicy(Qt::StrongFocus);
    conservarSitio(ImgStop_);
    ImgStop_->hide();
}

void PanelTransferencia::colocar() {
    auto* proceso = new QWidget(this);
    const int lado = style()->pixelMetric(QStyle::PM_LargeIconSize);
    proceso->setMinimumSize(lado, lado);
    auto* pila = new QGridLayout(proceso);
    pila->setContentsMargins(0, 0, 0, 0);
    for (auto* imagen : Imgproceso_) {
        pila->addWidget(imagen, 0, 0, Qt::AlignCenter);
    }
    auto* rejilla = new QGridLayout(this);
    rejilla->addWidget(proceso, 0, 0, 3, 1);
    rejilla->addWidget(Label1_, 0, 1);
    rejilla->addWidget(NombreArchivo_, 0, 2);
    rejilla->addWidget(Label3_, 0, 3);
    rejilla->addWidget(Tamano_, 0, 4);
    rejilla->addWidget(Label5_, 1, 1);
    rejilla->addWidget(Progreso_, 1, 2);
    rejilla->addWidget(marcha_, 1, 3, 1, 2);
    rejilla->addWidget(Gauge1_, 2, 1, 1, 4);
    rejilla->addWidget(ImgStop_, 0, 5, 3, 1);
    rejilla->setColumnStretch(2, 3);
    rejilla->setColumnStretch(4, 2);
}

void PanelTransferencia::pintarRotulos() {
    const auto poner = [](QLabel* rotulo, EtiquetaCorta* valor, const std::string& texto) {
        auto conPuntos = aQt(texto);
        if (!conPuntos.isEmpty() && !conPuntos.endsWith(':')) {
            conPuntos += ':';
        }
        rotulo->setText(conPuntos);
        valor->ponerCabecera(conPuntos);
    };
    poner(Label1_, NombreArchivo_, vista_.rotulos.Label1);
    poner(Label3_, Tamano_, vista_.rotulos.Label3);
    poner(Label5_, Progreso_, vista_.rotulos.Label5);
}

void PanelTransferencia::pintarEtiquetas() {
    NombreArchivo_->poner(aQt(vista_.NombreArchivo));
    Tamano_->poner(aQt(vista_.Tamaño));
    Progreso_->poner(aQt(vista_.Progreso));
}

// A transfer that runs without its indicator (a plain button starts it) shows all the same. Whatever locks
// the window or moves the gauge can be stopped.
void PanelTransferencia::pintarPanel() {
    const auto& transferencia = vista_.transferencia;
    int cual = vista_.panel;
    if (cual == sinPanel && transferencia.activa) {
        cual = transferencia.subida ? panelSubida : panelBajada;
    }
    for (std::size_t i = 0; i < Imgproceso_.size(); ++i) {
        Imgproceso_[i]->setVisible(cual == static_cast<int>(i));
    }
    const bool trabaja = cual != sinPanel || vista_.bloqueada || vista_.medidor.visible;
    ImgStop_->setVisible(trabaja);
    escape_->setEnabled(trabaja);
    for (QWidget* parte : std::initializer_list<QWidget*>{Label1_, Label3_, Label5_, NombreArchivo_, Tamano_,
                                                          Progreso_, marcha_, Gauge1_}) {
        parte->setEnabled(vista_.habilitada);  // the Stop answers whatever has been refused
    }
}

void PanelTransferencia::pintarMedidor() {
    Gauge1_->poner(vista_.medidor);
    pintarPanel();
}

void PanelTransferencia::pintarTransferencia() {
    pintarPanel();
    const auto desdeArranque = std::chrono::steady_clock::now().time_since_epoch();
    const double ahora = std::chrono::duration<double>(desdeArranque).count();
    marcha_->poner(aQt(core::textoMarcha(vista_.transferencia, ahora, palabras_.espanol())));
    if (vista_.transferencia.activa != reloj_.isActive()) {
        vista_.transferencia.activa ? reloj_.start() : reloj_.stop();
    }
}

}  // namespace tarvoline::ui
