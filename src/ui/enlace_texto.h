// A link that is a button of its own: underlined text in the palette's link colour.
#pragma once

#include <QAbstractButton>

namespace tarvoline::ui {

class EnlaceTexto : public QAbstractButton {
    Q_OBJECT

  public:
    // `nombre` is the object's name.
    EnlaceTexto(const QString& nombre, QWidget* padre);
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* evento) override;
};

}  // namespace tarvoline::ui
