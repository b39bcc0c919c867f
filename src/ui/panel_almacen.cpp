#include "ui/panel_almacen.h"

#include <QGridLayout>
#include <QStyle>

#include "ui/iconos.h"
#include "ui/texto_qt.h"

namespace tarvoline::ui {

namespace {

// Red that can be read on the window's ground, light or dark.
QColor rojo(const QPalette& paleta) {
    const bool oscuro = paleta.color(QPalette::Window).lightness() < 128;
    return oscuro ? QColor(255, 128, 128) : QColor(192, 0, 0);
}

}  // namespace

PanelAlmacen::PanelAlmacen(const core::Vista& vista, const Palabras& palabras, const QString& excedida,
                           QWidget* padre)
    : QWidget(padre),
      vista_(vista),
      palabras_(palabras),
      Imgcapacidad_(new QToolButton(this)),
      ImgTamano_(new QLabel(this)),
      lbtotalocupado_(new QLabel(this)),
      excedida_(new QLabel(excedida, this)) {
    const int lado = style()->pixelMetric(QStyle::PM_ToolBarIconSize);
    Imgcapacidad_->setObjectName("Imgcapacidad");
    Imgcapacidad_->setIcon(icono("capacidad"));
    Imgcapacidad_->setIconSize(QSize(lado, lado));
    Imgcapacidad_->setAutoRaise(true);
    Imgcapacidad_->setFocusPolicy(Qt::StrongFocus);
    Imgcapacidad_->setCursor(Qt::PointingHandCursor);
    connect(Imgcapacidad_, &QToolButton::clicked, this, &PanelAlmacen::informePedido);
    ImgTamano_->setObjectName("ImgTamaño");
    ImgTamano_->setPixmap(icono("tamano").pixmap(QSize(lado, lado), devicePixelRatioF()));
    for (std::size_t i = 0; i < LbCapacidad_.size(); ++i) {
        LbCapacidad_[i] = new QLabel(this);
        LbCapacidad_[i]->setObjectName(QString("LbCapacidad(%1)").arg(i));
        LbCapacidad_[i]->setWordWrap(true);
    }
    lbtotalocupado_->setObjectName("lbtotalocupado");
    excedida_->setObjectName("excedida");
    excedida_->setWordWrap(true);
    excedida_->setAccessibleDescription(palabras_("Subir queda cerrado; bajar y restaurar no",
                                                  "Sending is closed; fetching and restoring are not"));
    auto letra = excedida_->font();
    letra.setBold(true);
    excedida_->setFont(letra);
    excedida_->hide();
    colocar();
}

void PanelAlmacen::colocar() {
    auto* rejilla = new QGridLayout(this);
    rejilla->setContentsMargins(0, 0, 0, 0);
    rejilla->addWidget(ImgTamano_, 0, 0, Qt::AlignCenter);
    rejilla->addWidget(lbtotalocupado_, 0, 1);
    rejilla->addWidget(Imgcapacidad_, 1, 0, 2, 1, Qt::AlignCenter);
    rejilla->addWidget(LbCapacidad_[1], 1, 1);
    rejilla->addWidget(LbCapacidad_[0], 2, 1);
    rejilla->addWidget(excedida_, 3, 0, 1, 2);
    rejilla->setColumnStretch(1, 1);
}

void PanelAlmacen::pintarRotulos() {
    const auto poner = [](QWidget* control, const std::string& ayuda) {
        control->setToolTip(aQt(ayuda));
        control->setAccessibleName(aQt(ayuda));
    };
    poner(ImgTamano_, vista_.rotulos.ayudaTamaño);
    poner(Imgcapacidad_, vista_.rotulos.ayudaCapacidad);
    Imgcapacidad_->setAccessibleDescription(
        palabras_("Muestra lo que ocupa cada usuario", "Shows what each user takes up"));
}

void PanelAlmacen::pintarEtiquetas() {
    auto colores = palette();
    if (vista_.capacidadRoja) {
        colores.setColor(QPalette::WindowText, rojo(colores));
    }
    for (std::size_t i = 0; i < LbCapacidad_.size(); ++i) {
        LbCapacidad_[i]->setText(aQt(vista_.LbCapacidad[i]));
        LbCapacidad_[i]->setPalette(colores);
    }
    excedida_->setPalette(colores);
    excedida_->setVisible(vista_.capacidadRoja);
    lbtotalocupado_->setText(aQt(vista_.lbtotalocupado));
    const auto carpeta = palabras_("Espacio ocupado por la carpeta: ", "Space used by the folder: ");
    lbtotalocupado_->setAccessibleName(carpeta + lbtotalocupado_->text());
}

void PanelAlmacen::habilitar(bool estado) {
    setEnabled(estado);
}

}  // namespace tarvoline::ui
