// A report as a table that can be copied.
#pragma once

#include <QDialog>
#include <QTableWidget>

#include "core/escritorio.h"
#include "ui/palabras.h"

namespace tarvoline::ui {

class DialogoListado : public QDialog {
    Q_OBJECT

  public:
    DialogoListado(const core::Listado& listado, const Palabras& palabras, QWidget* padre);

    // Puts the chosen rows on the clipboard, all of them when there is only one or none chosen, with the
    // heads: columns divided by tabs, as spreadsheets take them.
    void copiar() const;

  private:
    void llenar(const core::Listado& listado);
    void ajustar();

    QTableWidget* tabla_;
};

}  // namespace tarvoline::ui
