// The desktop of the window: boxes, questions, prompts and dialogs of the toolkit.
#pragma once

#include <QPointer>
#include <QWidget>

#include "core/escritorio.h"

namespace tarvoline::ui {

class EscritorioQt : public core::Escritorio {
  public:
    // Boxes open over `ventana` when there is one, else on their own. Borrowed.
    void ponerVentana(QWidget* ventana) { ventana_ = ventana; }
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
    QWidget* sobre() const;

    QPointer<QWidget> ventana_;
    bool finPedido_ = false;
    bool espera_ = false;
};

}  // namespace tarvoline::ui
