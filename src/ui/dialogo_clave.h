// The prompt for one line of text, masked unless said otherwise.
#pragma once

#include <QDialog>
#include <QLineEdit>

#include "core/escritorio.h"
#include "ui/palabras.h"

namespace tarvoline::ui {

class DialogoClave : public QDialog {
    Q_OBJECT

  public:
    DialogoClave(const core::Peticion& peticion, const Palabras& palabras, QWidget* padre);
    std::string respuesta() const;

  private:
    QLineEdit* linea_;
};

}  // namespace tarvoline::ui
