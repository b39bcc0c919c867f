// The desktop of the window: boxes, questions, prompts and dialogs of the toolkit.
#pragma once

#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <QWidget>

#include "core/escritorio.h"
#include "ui/palabras.h"

namespace tarvoline::ui {

class EscritorioQt : public core::Escritorio {
  public:
    // Boxes open over `ventana` when it is on show, else on their own. Borrowed.
    void ponerVentana(QWidget* ventana) { ventana_ = ventana; }
    // The language of the captions; Spanish until told otherwise.
    void ponerPalabras(const Palabras& palabras) { palabras_ = palabras; }
    // The window was closed in mid-work: the next turn ends the program.
    void pedirFin() { finPedido_ = true; }

    void Mensaje(const core::Caja& caja) override;
    bool Preguntar(const core::Caja& caja, bool siPorDefecto = true) override;
    bool Confirmar(const core::Caja& caja) override;
    std::optional<std::string> Pedir(const core::Peticion& peticion) override;
    bool PedirDatos(core::EntradaDatos& datos) override;
    std::optional<std::string> ElegirArchivo(const core::EleccionArchivo& eleccion) override;
    std::optional<std::string> GuardarComo(const core::EleccionArchivo& eleccion) override;
    std::optional<std::string> ElegirCarpeta(std::string_view titulo) override;
    void MostrarListado(const core::Listado& listado) override;
    void Abrir(std::string_view documento) override;
    void Turno() override;
    void Latido() override;
    void Puntero(bool espera) override;
    bool hayPersona() const override { return true; }

  private:
    // What a new dialog opens over: the dialog that is open, else the window.
    QWidget* sobre() const;
    // Runs a dialog to its end; what lies below it has its normal pointer meanwhile.
    int mostrar(QDialog& dialogo);
    // The caption of the button that closed the box.
    QMessageBox::StandardButton mostrarCaja(const core::Caja& caja, QMessageBox::StandardButtons botones,
                                            QMessageBox::StandardButton porDefecto);
    std::optional<std::string> mostrarEleccion(QFileDialog& dialogo, const QString& aceptar);

    QPointer<QWidget> ventana_;
    Palabras palabras_{true};
    bool finPedido_ = false;
    bool espera_ = false;
};

}  // namespace tarvoline::ui
