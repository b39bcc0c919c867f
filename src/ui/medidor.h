// The gauge `Gauge1`: a dark blue bar with its figure in the middle.
#pragma once

#include <QProgressBar>

#include "core/vista.h"

namespace tarvoline::ui {

class Medidor : public QProgressBar {
    Q_OBJECT

  public:
    explicit Medidor(QWidget* padre);

    // Shown at once, even while a workflow keeps the event loop waiting.
    void poner(const core::Medidor& medidor);

  protected:
    void paintEvent(QPaintEvent* evento) override;
};

}  // namespace tarvoline::ui
