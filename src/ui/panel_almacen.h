// The storage figures: what the folder on show takes, and what of the contracted capacity is used.
#pragma once

#include <QLabel>
#include <QToolButton>
#include <array>

#include "core/vista.h"
#include "ui/palabras.h"

namespace tarvoline::ui {

class PanelAlmacen : public QWidget {
    Q_OBJECT

  public:
    // `vista` is borrowed; `excedida` is what is said when more is used than contracted.
    PanelAlmacen(const core::Vista& vista, const Palabras& palabras, const QString& excedida, QWidget* padre);

    void pintarEtiquetas();
    void pintarRotulos();
    void habilitar(bool estado);

  signals:
    void informePedido();

  private:
    void colocar();

    const core::Vista& vista_;
    Palabras palabras_;
    QToolButton* Imgcapacidad_;
    QLabel* ImgTamano_;
    std::array<QLabel*, 2> LbCapacidad_{};
    QLabel* lbtotalocupado_;
    QLabel* excedida_;
};

}  // namespace tarvoline::ui
