// The line that looks for a text in the rows on show, without regard to case and accents.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QWidget>

#include "core/vista.h"
#include "ui/palabras.h"
#include "ui/rejilla.h"

namespace tarvoline::ui {

class Buscador : public QWidget {
    Q_OBJECT

  public:
    // Both are borrowed.
    Buscador(const core::Rejilla& filas, Rejilla& rejilla, const Palabras& palabras, QWidget* padre);

    // Shows the line and gives it the keyboard.
    void abrir();
    // Chooses the next row that holds the text, going round at the end; `paso` -1 goes upwards.
    void buscar(int paso);

  protected:
    void keyPressEvent(QKeyEvent* evento) override;

  private:
    void cerrar();
    bool coincide(int fila, const QString& buscado) const;

    const core::Rejilla& filas_;
    Rejilla& rejilla_;
    Palabras palabras_;
    QLineEdit* texto_;
    QLabel* resultado_;
};

}  // namespace tarvoline::ui
