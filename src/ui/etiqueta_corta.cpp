#include "ui/etiqueta_corta.h"

#include <QPainter>
#include <QStyle>

namespace tarvoline::ui {

EtiquetaCorta::EtiquetaCorta(const QString& nombre, QWidget* padre) : QLabel(padre) {
    setObjectName(nombre);
    setTextFormat(Qt::PlainText);
}

void EtiquetaCorta::poner(const QString& texto) {
    if (texto != text()) {
        setText(texto);
        anunciar();
    }
}

void EtiquetaCorta::ponerCabecera(const QString& cabecera) {
    cabecera_ = cabecera;
    anunciar();
}

void EtiquetaCorta::anunciar() {
    setAccessibleName(cabecera_.isEmpty() ? text() : cabecera_ + " " + text());
}

QSize EtiquetaCorta::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 6, QLabel::minimumSizeHint().height()};
}

void EtiquetaCorta::paintEvent(QPaintEvent*) {
    QPainter pintor(this);
    const auto zona = contentsRect();
    const auto corto = fontMetrics().elidedText(text(), Qt::ElideMiddle, zona.width());
    style()->drawItemText(&pintor, zona, static_cast<int>(alignment()), palette(), isEnabled(), corto,
                          foregroundRole());
    setToolTip(corto == text() ? QString() : text());
}

}  // namespace tarvoline::ui
