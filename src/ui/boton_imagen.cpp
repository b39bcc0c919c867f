#include "ui/boton_imagen.h"

#include <QEvent>
#include <QPainter>
#include <QStyleOptionToolButton>
#include <utility>

#include "ui/iconos.h"

namespace tarvoline::ui {

namespace {

QLabel* crearImagen(const QString& nombre, QWidget* padre) {
    auto* imagen = new QLabel(padre);
    imagen->setObjectName(nombre);
    imagen->setAttribute(Qt::WA_TransparentForMouseEvents);
    imagen->setCursor(Qt::PointingHandCursor);
    return imagen;
}

// The picture under the pointer: the same one on a disc of the palette's highlight.
QPixmap resaltada(const QIcon& icono, int lado, qreal escala, const QColor& color) {
    QPixmap lienzo(QSize(lado, lado) * escala);
    lienzo.setDevicePixelRatio(escala);
    lienzo.fill(Qt::transparent);
    QPainter pintor(&lienzo);
    pintor.setRenderHint(QPainter::Antialiasing);
    pintor.setPen(Qt::NoPen);
    pintor.setBrush(color);
    pintor.drawRoundedRect(QRectF(0, 0, lado, lado), lado / 5.0, lado / 5.0);
    icono.paint(&pintor, QRect(1, 1, lado - 2, lado - 2), Qt::AlignCenter, QIcon::Selected);
    return lienzo;
}

}  // namespace

BotonImagen::BotonImagen(const QString& nombre, int indice, QString imagen, QWidget* padre)
    : QAbstractButton(padre),
      imagen_(std::move(imagen)),
      Picture1_(crearImagen(QString("Picture1(%1)").arg(indice), this)),
      Picture2_(crearImagen(QString("Picture2(%1)").arg(indice), this)) {
    setObjectName(nombre);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    resaltar(false);
}

int BotonImagen::margen() const {
    return style()->pixelMetric(QStyle::PM_ButtonMargin, nullptr, this);
}

int BotonImagen::lado() const {
    return style()->pixelMetric(QStyle::PM_ButtonIconSize, nullptr, this) + 2;
}

QSize BotonImagen::sizeHint() const {
    const auto texto = fontMetrics().size(Qt::TextShowMnemonic, text());
    return {margen() * 3 + lado() + texto.width(), std::max(lado(), texto.height()) + margen()};
}

void BotonImagen::resaltar(bool encima) {
    Picture1_->setVisible(!encima);
    Picture2_->setVisible(encima);
}

void BotonImagen::pintarImagenes() {
    const auto icono = ui::icono(imagen_);
    const auto escala = devicePixelRatioF();
    const auto modo = isEnabled() ? QIcon::Normal : QIcon::Disabled;
    Picture1_->setPixmap(icono.pixmap(QSize(lado(), lado()), escala, modo));
    Picture2_->setPixmap(resaltada(icono, lado(), escala, palette().color(QPalette::Highlight)));
    const QRect lugar(margen(), (height() - lado()) / 2, lado(), lado());
    const auto visible = QStyle::visualRect(layoutDirection(), rect(), lugar);
    Picture1_->setGeometry(visible);
    Picture2_->setGeometry(visible);
}

void BotonImagen::resizeEvent(QResizeEvent* evento) {
    QAbstractButton::resizeEvent(evento);
    pintarImagenes();
}

void BotonImagen::changeEvent(QEvent* evento) {
    QAbstractButton::changeEvent(evento);
    switch (evento->type()) {
        case QEvent::EnabledChange:
            resaltar(false);
            [[fallthrough]];
        case QEvent::PaletteChange:
        case QEvent::ApplicationPaletteChange:
        case QEvent::StyleChange:
            pintarImagenes();
            break;
        case QEvent::FontChange:
            updateGeometry();
            break;
        default:
            break;
    }
}

void BotonImagen::enterEvent(QEnterEvent*) {
    resaltar(isEnabled());
}

void BotonImagen::leaveEvent(QEvent*) {
    resaltar(false);
}

void BotonImagen::paintEvent(QPaintEvent*) {
    QPainter pintor(this);
    QStyleOptionToolButton opcion;
    opcion.initFrom(this);
    opcion.state |= QStyle::State_AutoRaise;
    opcion.state.setFlag(QStyle::State_Raised, underMouse() && isEnabled());
    opcion.state.setFlag(QStyle::State_Sunken, isDown());
    if (opcion.state & (QStyle::State_Raised | QStyle::State_Sunken)) {
        style()->drawPrimitive(QStyle::PE_PanelButtonTool, &opcion, &pintor, this);
    }
    const QRect zona = rect().adjusted(margen() * 2 + lado(), 0, -margen(), 0);
    const bool conLetra = style()->styleHint(QStyle::SH_UnderlineShortcut, &opcion, this) != 0;
    const auto letra = conLetra ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
    style()->drawItemText(&pintor, QStyle::visualRect(layoutDirection(), rect(), zona),
                          static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter) | letra, palette(), isEnabled(),
                          text(), QPalette::ButtonText);
    if (hasFocus()) {
        QStyleOptionFocusRect foco;
        foco.initFrom(this);
        foco.rect = rect().adjusted(1, 1, -1, -1);
        foco.backgroundColor = palette().color(QPalette::Window);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &foco, &pintor, this);
    }
}

}  // namespace tarvoline::ui
