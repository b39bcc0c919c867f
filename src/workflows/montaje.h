// Builds every object of a program once and joins them: platform, core, link, service and workflows, below
// one desktop.
#pragma once

#include <memory>

#include "core/entorno.h"
#include "core/inicio.h"
#include "platform/procesos.h"
#include "soap/cliente.h"
#include "tarvoline/contexto.h"
#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Montaje {
  public:
    // Both are borrowed. Throws when the settings cannot be reached at all.
    Montaje(core::Escritorio& escritorio, core::Registro& registro);

    core::Entorno& entorno() { return entorno_; }
    core::Estado& estado() { return estado_; }
    core::Vista& vista() { return vista_; }
    Flujos& flujos() { return flujos_; }
    // The mark of this process as an instance of the program; taken at the first call. A process that only
    // looks never takes it, so that an unattended run does not give way to it.
    platform::MarcaInstancia& instancia();

  private:
    std::unique_ptr<platform::SistemaArchivos> archivos_;
    std::unique_ptr<platform::Reloj> reloj_;
    std::unique_ptr<platform::ArbolAjustes> arbol_;
    std::unique_ptr<platform::ArbolAjustes> arbolMaquina_;
    core::Ajustes ajustes_;
    core::AlmacenComun almacen_;
    core::Carpetas carpetas_;
    core::Estado estado_;
    core::Vista vista_;
    core::Entorno entorno_;
    soap::Conexion conexion_;
    link::Contexto enlaces_;
    Flujos flujos_;
    std::unique_ptr<platform::MarcaInstancia> instancia_;
};

// What the start asks of the workflows. The window's two steps belong to the floor that has one; without it
// they throw.
class CaminosFlujos : public core::Caminos {
  public:
    explicit CaminosFlujos(Montaje& montaje) : montaje_(montaje) {}

    std::string ContinuarSubida() override;
    bool SubirPendientesBatch(bool mostrar) override;
    void CargarConfiguracionEmpresa(std::string_view ruta) override;
    void PrepararGrid() override;
    void QuitarAccesoInicio() override;
    void CrearVentana() override;
    void MostrarVentana() override;
    void Reiniciar(std::string_view ordenes) override;
    void LimpiarZipsTemporales() override;

  protected:
    Montaje& montaje_;
};

}  // namespace tarvoline::workflows
