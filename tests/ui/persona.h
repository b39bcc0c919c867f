// Somebody at the keyboard of a modal dialog: the steps are queued before the dialog opens and run inside its
// event loop, one a dialog.
//
//   Persona persona;
//   persona.ante([](QDialog& dialogo) { dialogo.accept(); });
//   EXPECT_TRUE(escritorio.PedirDatos(datos));
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>
#include <deque>
#include <functional>
#include <stdexcept>
#include <string>

namespace tarvoline::pruebas {

class Persona : public QObject {
  public:
    Persona() { mirar(); }
    ~Persona() override { EXPECT_TRUE(pasos_.empty()) << pasos_.size() << " dialog(s) never opened"; }

    // `paso` must close the dialog, or leave it to the next step.
    void ante(std::function<void(QDialog&)> paso) { pasos_.push_back(std::move(paso)); }

  private:
    void mirar() {
        // A timer for each look: a step that opens another dialog is still inside its own.
        QTimer::singleShot(1, this, [this] { mirar(); });
        auto* dialogo = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialogo == nullptr || !dialogo->isVisible()) {
            return;
        }
        if (!dialogo->isActiveWindow() && ++sinActivar_ < paciencia) {
            return;  // the keyboard is not its own yet
        }
        sinActivar_ = 0;
        if (pasos_.empty()) {
            // A step may still be closing it; one that nobody expects must not hold the test for ever.
            if (++sobrantes_ > paciencia) {
                ADD_FAILURE() << "unexpected dialog: " << dialogo->windowTitle().toStdString();
                dialogo->done(QDialog::Rejected);
            }
            return;
        }
        sobrantes_ = 0;
        const auto paso = std::move(pasos_.front());
        pasos_.pop_front();
        try {
            paso(*dialogo);
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what();  // it must not reach the event loop
            dialogo->done(QDialog::Rejected);
        }
    }

    static constexpr int paciencia = 3000;  // looks, of a millisecond or more
    std::deque<std::function<void(QDialog&)>> pasos_;
    int sobrantes_ = 0;
    int sinActivar_ = 0;
};

template <typename Control = QWidget>
Control& hijo(QWidget& padre, const QString& nombre) {
    auto* hallado = padre.findChild<Control*>(nombre);
    if (hallado == nullptr) {
        throw std::runtime_error("no control " + nombre.toStdString());
    }
    return *hallado;
}

}  // namespace tarvoline::pruebas
