// The desktop's style with the two things that are this program's own.
#pragma once

#include <QProxyStyle>

namespace tarvoline::ui {

// Hidden text shows an asterisk a character; the marks of options and boxes keep a rim on dark ground.
class Estilo : public QProxyStyle {
    Q_OBJECT

  public:
    using QProxyStyle::QProxyStyle;

    int styleHint(StyleHint que, const QStyleOption* opcion, const QWidget* control,
                  QStyleHintReturn* masDatos) const override;
    void drawPrimitive(PrimitiveElement pieza, const QStyleOption* opcion, QPainter* pintor,
                       const QWidget* control) const override;
};

}  // namespace tarvoline::ui
