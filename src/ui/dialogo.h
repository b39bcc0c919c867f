// What the small dialogs have in common.
#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QString>
#include <functional>
#include <optional>

#include "core/entorno.h"
#include "ui/palabras.h"

namespace tarvoline::ui {

// The texts of boxes divide their lines by CR LF.
QString enLineas(QString texto);
// Text that holds names of companies or users: its "&" is a letter and marks no access key.
QString sinMarca(QString texto);

// OK and Cancel in the language in force, joined to accept() and reject().
QDialogButtonBox* crearAceptarCancelar(QDialog& dialogo, const Palabras& palabras);

// Name and description for a screen reader in one line.
void describir(QWidget& control, const QString& nombre, const QString& descripcion = {});

// A line that takes `longitud` characters at most (0 = any number) and is wide enough to show them, up to a
// readable width.
QLineEdit* crearLinea(const QString& valor, int longitud, bool oculto, QWidget* padre);

// A dialog whose controls run work of the program. No exception may cross the toolkit's event loop: an error
// is shown in a box, and the end of the program closes the dialog and goes on from exec().
class DialogoSeguro : public QDialog {
    Q_OBJECT

  public:
    // `entorno` is borrowed.
    DialogoSeguro(core::Entorno& entorno, QWidget* padre) : QDialog(padre), entorno_(entorno) {}
    // Throws core::FinDePrograma.
    int exec() override;

  protected:
    // Whether `paso` ran to its end.
    bool ejecutar(const std::function<void()>& paso);

    core::Entorno& entorno_;

  private:
    std::optional<core::FinDePrograma> fin_;
};

}  // namespace tarvoline::ui
