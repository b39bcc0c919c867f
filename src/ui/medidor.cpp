#include "ui/medidor.h"

#include <QPainter>
#include <QPainterPath>

namespace tarvoline::ui {

namespace {

// These are the gauge's own in every palette: its figure is black or yellow, so its ground stays light.
constexpr QColor colorBarra(0, 0, 128);
constexpr QColor colorFondo(214, 217, 222);
constexpr QColor colorCifraBaja(0, 0, 0);
constexpr QColor colorCifraAlta(255, 255, 0);
constexpr int cifraSobreBarra = 49;  // from this percentage on the bar has reached the figure

}  // namespace

Medidor::Medidor(QWidget* padre) : QProgressBar(padre) {
    setObjectName("Gauge1");
    setRange(0, 100);
    auto politica = sizePolicy();
    politica.setRetainSizeWhenHidden(true);
    setSizePolicy(politica);
    hide();
}

void Medidor::poner(const core::Medidor& medidor) {
    const bool igual = medidor.visible == !isHidden() && medidor.porcentaje == value();
    setValue(medidor.porcentaje);
    setVisible(medidor.visible);
    if (medidor.visible && !igual) {
        repaint();
    }
}

void Medidor::paintEvent(QPaintEvent*) {
    QPainter pintor(this);
    pintor.fillRect(rect(), colorFondo);
    pintor.fillRect(0, 0, static_cast<int>(width() / 100.0 * value()), height(), colorBarra);

    const auto cifra = QString("%1%").arg(value());
    const auto metrica = fontMetrics();
    const QPointF base((width() - metrica.horizontalAdvance(cifra)) / 2,
                       (height() - metrica.height()) / 2 + metrica.ascent());
    if (value() < cifraSobreBarra) {
        pintor.setPen(colorCifraBaja);
        pintor.drawText(base, cifra);
        return;
    }
    // Around the middle half of the figure stands beside the bar still: a rim of the bar's colour carries it.
    QPainterPath trazo;
    trazo.addText(base, font(), cifra);
    pintor.setRenderHint(QPainter::Antialiasing);
    pintor.strokePath(trazo, QPen(colorBarra, metrica.lineWidth() * 3));
    pintor.fillPath(trazo, colorCifraAlta);
}

}  // namespace tarvoline::ui
