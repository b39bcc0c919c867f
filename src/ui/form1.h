// The terms window.
#pragma once

#include <QPlainTextEdit>
#include <QPushButton>
#include <array>

#include "ui/dialogo.h"
#include "workflows/terminos.h"

namespace tarvoline::ui {

class Form1 : public DialogoSeguro {
    Q_OBJECT

  public:
    // Throws platform::ErrorArchivo when the terms file is missing. `terminos` is borrowed.
    Form1(workflows::Terminos& terminos, core::Entorno& entorno, QWidget* padre);

  protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

  private:
    void responder(int indice);

    workflows::Terminos& flujo_;
    QPlainTextEdit* terminos_;
    std::array<QPushButton*, 2> Command1_{};
};

}  // namespace tarvoline::ui
