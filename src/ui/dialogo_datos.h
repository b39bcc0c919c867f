// The dialog of several fields.
#pragma once

#include <QButtonGroup>
#include <QDialog>
#include <QFormLayout>
#include <functional>
#include <vector>

#include "core/escritorio.h"
#include "ui/palabras.h"

namespace tarvoline::ui {

class DialogoDatos : public QDialog {
    Q_OBJECT

  public:
    // Field i, counted from 1, is the control "campo<i>".
    DialogoDatos(const core::EntradaDatos& datos, const Palabras& palabras, QWidget* padre);

    // Writes the answers of all fields.
    void recoger(core::EntradaDatos& datos) const;

  private:
    void poner(const core::CampoDatos& campo, int opcionElegida);
    void ponerLinea(const core::CampoDatos& campo, const QString& etiqueta);
    void ponerEleccion(const core::CampoDatos& campo, const QString& etiqueta);
    void ponerCasilla(const core::CampoDatos& campo, const QString& etiqueta);
    void ponerOpcion(const QString& etiqueta, int opcionElegida);
    void ponerFila(const QString& etiqueta, QWidget& control);

    Palabras palabras_;
    QFormLayout* campos_;
    QButtonGroup* opciones_;
    std::vector<std::function<std::string()>> lectores_;  // one a field
};

}  // namespace tarvoline::ui
