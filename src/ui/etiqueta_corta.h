// A label that shortens its text in the middle when it does not fit, and then tells the whole in its tooltip.
#pragma once

#include <QLabel>

namespace tarvoline::ui {

class EtiquetaCorta : public QLabel {
    Q_OBJECT

  public:
    // `nombre` is the object's name.
    EtiquetaCorta(const QString& nombre, QWidget* padre);

    void poner(const QString& texto);
    // What stands before the text when it is read out: "Archivo: ".
    void ponerCabecera(const QString& cabecera);
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* evento) override;

  private:
    void anunciar();

    QString cabecera_;
};

}  // namespace tarvoline::ui
