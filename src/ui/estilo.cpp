#include "ui/estilo.h"

#include <QStyleOptionButton>

namespace tarvoline::ui {

namespace {

constexpr int mitadDeLuz = 128;

// The rim is drawn as a darker tone of the window's colour, which on a dark window is none.
QPalette conBorde(QPalette paleta) {
    paleta.setColor(QPalette::Window, paleta.color(QPalette::PlaceholderText));
    return paleta;
}

}  // namespace

int Estilo::styleHint(StyleHint que, const QStyleOption* opcion, const QWidget* control,
                      QStyleHintReturn* masDatos) const {
    return que == SH_LineEdit_PasswordCharacter ? u'*'
                                                : QProxyStyle::styleHint(que, opcion, control, masDatos);
}

void Estilo::drawPrimitive(PrimitiveElement pieza, const QStyleOption* opcion, QPainter* pintor,
                           const QWidget* control) const {
    const auto* marca = qstyleoption_cast<const QStyleOptionButton*>(opcion);
    const bool esMarca = pieza == PE_IndicatorRadioButton || pieza == PE_IndicatorCheckBox;
    if (!esMarca || marca == nullptr || marca->palette.color(QPalette::Window).lightness() >= mitadDeLuz) {
        QProxyStyle::drawPrimitive(pieza, opcion, pintor, control);
        return;
    }
    auto clara = *marca;
    clara.palette = conBorde(marca->palette);
    QProxyStyle::drawPrimitive(pieza, &clara, pintor, control);
}

}  // namespace tarvoline::ui
