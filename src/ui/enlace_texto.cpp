#include "ui/enlace_texto.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace tarvoline::ui {

EnlaceTexto::EnlaceTexto(const QString& nombre, QWidget* padre) : QAbstractButton(padre) {
    setObjectName(nombre);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize EnlaceTexto::sizeHint() const {
    const int margen = style()->pixelMetric(QStyle::PM_ButtonMargin, nullptr, this);
    return fontMetrics().size(Qt::TextSingleLine, text()) + QSize(margen * 2, margen);
}

void EnlaceTexto::paintEvent(QPaintEvent*) {
    QPainter pintor(this);
    auto letra = font();
    letra.setUnderline(true);
    pintor.setFont(letra);
    pintor.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled,
                                  isEnabled() ? QPalette::Link : QPalette::WindowText));
    pintor.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
    if (hasFocus()) {
        QStyleOptionFocusRect foco;
        foco.initFrom(this);
        foco.backgroundColor = palette().color(QPalette::Window);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &foco, &pintor, this);
    }
}

}  // namespace tarvoline::ui
