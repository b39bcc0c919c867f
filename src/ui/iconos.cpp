// The drawings are stored in two fixed colours that can be read on light and dark alike, so a plain viewer
// shows them well. Inside the program a small icon engine puts the palette's colours in their place, at the
// moment of painting: no icon has to be made anew when the palette changes.
#include "ui/iconos.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

// Outside of any namespace, as the macro wants it.
static void cargarRecursos() {
    Q_INIT_RESOURCE(iconos);
}

namespace tarvoline::ui {

namespace {

constexpr auto colorLinea = "#6c7a89";
constexpr auto colorAcento = "#2d8cd8";
// Below this contrast a line of two pixels gets lost.
constexpr double contrasteMinimo = 2.5;

// A shade softer than the text: thick strokes look darker than letters of the same colour.
constexpr float pesoLinea = 0.82F;

QColor mezcla(const QColor& uno, const QColor& otro, float peso) {
    const auto parte = [peso](float a, float b) { return a * peso + b * (1 - peso); };
    return QColor::fromRgbF(parte(uno.redF(), otro.redF()), parte(uno.greenF(), otro.greenF()),
                            parte(uno.blueF(), otro.blueF()));
}

// Relative luminance and contrast ratio as the accessibility guidelines for web content define them.
double luminancia(const QColor& color) {
    const auto lineal = [](double v) {
        return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * lineal(color.redF()) + 0.7152 * lineal(color.greenF()) + 0.0722 * lineal(color.blueF());
}

double contraste(const QColor& uno, const QColor& otro) {
    const auto [oscuro, claro] = std::minmax({luminancia(uno), luminancia(otro)});
    return (claro + 0.05) / (oscuro + 0.05);
}

class MotorIcono : public QIconEngine {
  public:
    explicit MotorIcono(QByteArray dibujo) : dibujo_(std::move(dibujo)) {}

    QIconEngine* clone() const override { return new MotorIcono(dibujo_); }

    void paint(QPainter* pintor, const QRect& zona, QIcon::Mode modo, QIcon::State) override {
        QSvgRenderer(coloreado(modo)).render(pintor, zona);
    }

    QPixmap pixmap(const QSize& tamano, QIcon::Mode modo, QIcon::State estado) override {
        QPixmap imagen(tamano);
        imagen.fill(Qt::transparent);
        QPainter pintor(&imagen);
        paint(&pintor, imagen.rect(), modo, estado);
        return imagen;
    }

  private:
    QByteArray coloreado(QIcon::Mode modo) const {
        const auto paleta = QGuiApplication::palette();
        const auto grupo = modo == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto fondo = paleta.color(grupo, QPalette::Button);
        auto linea =
            paleta.color(grupo, modo == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText);
        auto acento = linea;
        if (modo == QIcon::Normal || modo == QIcon::Active) {
            linea = mezcla(linea, fondo, pesoLinea);
            acento = paleta.color(grupo, QPalette::Highlight);
            if (contraste(acento, fondo) < contrasteMinimo) {
                acento = paleta.color(grupo, QPalette::Link);
            }
        }
        auto dibujo = dibujo_;
        dibujo.replace(colorLinea, linea.name().toLatin1());
        dibujo.replace(colorAcento, acento.name().toLatin1());
        return dibujo;
    }

    QByteArray dibujo_;
};

}  // namespace

void cargarIconos() {
    cargarRecursos();
}

QIcon icono(const QString& nombre) {
    QFile archivo(":/iconos/" + nombre + ".svg");
    if (!archivo.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QIcon(new MotorIcono(archivo.readAll()));
}

QIcon iconoPrograma() {
    return QIcon(":/iconos/tarvoline.svg");
}

}  // namespace tarvoline::ui
