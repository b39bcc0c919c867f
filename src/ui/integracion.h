// What the desktop around the window is told: that a long transfer has ended while nobody looked, and that
// the computer must not fall asleep in the middle of one. Every service is optional. Without a bus, or
// without the service on it, nothing happens; no call waits for its answer.
#pragma once

#include <QString>
#include <QWidget>
#include <memory>

#include "core/vista.h"
#include "ui/palabras.h"

namespace tarvoline::ui {

// Addresses of the message buses; empty = there is none.
struct DireccionesBus {
    QString sesion;
    QString sistema;

    // Those of the environment, else the usual sockets where they exist. Never starts a bus.
    static DireccionesBus delEntorno();
};

class Integracion {
  public:
    // A shorter transfer is not worth a notification. In seconds.
    static constexpr double transferenciaLarga = 10;

    // `vista` and `ventana` are borrowed and outlive this object. The buses are joined at the first transfer.
    Integracion(const core::Vista& vista, QWidget& ventana, const Palabras& palabras,
                DireccionesBus direcciones = DireccionesBus::delEntorno());
    ~Integracion();
    Integracion(const Integracion&) = delete;
    Integracion& operator=(const Integracion&) = delete;

    // To be called at each change notice of the view.
    void alCambiar(core::Parte parte);

  private:
    class Buses;
    class Vigilia;

    void empezada();
    void terminada();

    const core::Vista& vista_;
    QWidget& ventana_;
    Palabras palabras_;
    std::unique_ptr<Buses> buses_;
    std::unique_ptr<Vigilia> vigilia_;  // lives as long as a transfer does
};

}  // namespace tarvoline::ui
