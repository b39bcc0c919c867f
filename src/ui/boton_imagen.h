// A command button with its pair of pictures: Picture1(i) at rest and, in its place, Picture2(i) while the
// pointer is over them.
#pragma once

#include <QAbstractButton>
#include <QLabel>

namespace tarvoline::ui {

class BotonImagen : public QAbstractButton {
    Q_OBJECT

  public:
    // `nombre`: object name of the button; `indice`: that of its pictures; `imagen`: the icon's name.
    BotonImagen(const QString& nombre, int indice, QString imagen, QWidget* padre);

    // Back to the picture at rest.
    void normalizar() { resaltar(false); }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;
    void changeEvent(QEvent* evento) override;
    void enterEvent(QEnterEvent* evento) override;
    void leaveEvent(QEvent* evento) override;

  private:
    int margen() const;
    int lado() const;
    void pintarImagenes();
    void resaltar(bool encima);

    QString imagen_;
    QLabel* Picture1_;
    QLabel* Picture2_;
};

}  // namespace tarvoline::ui
