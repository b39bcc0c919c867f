// The panel below the grid: what is being sent, fetched or packed, how far it is, and Stop.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QShortcut>
#include <QTimer>
#include <QToolButton>
#include <array>

#include "core/vista.h"
#include "ui/etiqueta_corta.h"
#include "ui/medidor.h"
#include "ui/palabras.h"

namespace tarvoline::ui {

class PanelTransferencia : public QFrame {
    Q_OBJECT

  public:
    // `vista` is borrowed.
    PanelTransferencia(const core::Vista& vista, const Palabras& palabras, QWidget* padre);

    void pintarEtiquetas();
    void pintarRotulos();
    void pintarPanel();
    void pintarMedidor();
    void pintarTransferencia();
    QToolButton& ImgStop() { return *ImgStop_; }

  signals:
    void detenerPedido();

  private:
    void crearImagenes();
    void colocar();

    const core::Vista& vista_;
    Palabras palabras_;
    QLabel* Label1_;
    QLabel* Label3_;
    QLabel* Label5_;
    EtiquetaCorta* NombreArchivo_;
    EtiquetaCorta* Tamano_;
    EtiquetaCorta* Progreso_;
    EtiquetaCorta* marcha_;  // speed and time left, or how long the service has kept us waiting
    std::array<QLabel*, 3> Imgproceso_{};
    QToolButton* ImgStop_;
    QShortcut* escape_;
    Medidor* Gauge1_;
    QTimer reloj_;  // the waiting time goes on while nothing else changes
};

}  // namespace tarvoline::ui
