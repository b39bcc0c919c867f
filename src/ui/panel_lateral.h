// The side of the window: which view and which folder, the commands on what is chosen, and the storage.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>
#include <QWidget>
#include <array>

#include "core/vista.h"
#include "ui/boton_imagen.h"
#include "ui/palabras.h"
#include "ui/panel_almacen.h"

namespace tarvoline::ui {

class PanelLateral : public QWidget {
    Q_OBJECT

  public:
    // `vista` is borrowed. `excedida`: see PanelAlmacen.
    PanelLateral(const core::Vista& vista, const Palabras& palabras, const QString& excedida, QWidget* padre);

    void pintarOpcion();
    void pintarCarpetas();
    void pintarRotulos();
    void pintarBloqueo();
    // All image buttons back to their picture at rest.
    void normalizar();
    PanelAlmacen& almacen() { return *almacen_; }

  signals:
    void opcionElegida(int indice);
    void carpetaElegida(int indice);
    void imagenPulsada(int indice);

  private:
    void crearOpciones(QVBoxLayout& columna);
    void crearCarpetas(QVBoxLayout& columna);
    void crearBotones(QVBoxLayout& columna);

    const core::Vista& vista_;
    Palabras palabras_;
    std::array<QRadioButton*, 4> Option1_{};
    QLabel* Label2_ = nullptr;
    QComboBox* carpetas_ = nullptr;
    std::array<BotonImagen*, 9> botones_{};
    PanelAlmacen* almacen_ = nullptr;
};

}  // namespace tarvoline::ui
