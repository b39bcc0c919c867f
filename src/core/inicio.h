// The start: prepares the program-wide state and takes one of two roads, decided by the command line alone.
#pragma once

#include <string>
#include <string_view>

#include "core/entorno.h"
#include "platform/procesos.h"

namespace tarvoline::core {

// Exit codes of the program.
namespace salida {
inline constexpr int bien = 0;
inline constexpr int noArranca = 1;
inline constexpr int empresaFallida = 3;
inline constexpr int otraInstancia = 11;
}  // namespace salida

// What the start needs from the floors above; the entry hands in the fulfilment.
class Caminos {
  public:
    virtual ~Caminos() = default;
    // The interrupted upload goes on; a text that is not empty is a message for the user.
    virtual std::string ContinuarSubida() = 0;
    // Works through the pending companies. True when none of them failed.
    virtual bool SubirPendientesBatch(bool mostrar) = 0;
    virtual void CargarConfiguracionEmpresa(std::string_view ruta) = 0;
    virtual void PrepararGrid() = 0;
    virtual void QuitarAccesoInicio() = 0;
    // Creates the main window (its load step runs, Estado::gEnReposo still up).
    virtual void CrearVentana() = 0;
    // Shows it modally and returns when it has closed.
    virtual void MostrarVentana() = 0;
    // Starts the program again with the given command line.
    virtual void Reiniciar(std::string_view ordenes) = 0;
    // Deletes archives that no upload needs any more from the transfer folder.
    virtual void LimpiarZipsTemporales() = 0;
};

// "22" and "2" open the window without the resume question; empty opens it with; everything else is
// unattended.
bool esCaminoInteractivo(std::string_view ordenes);
// "Y", "y" and any text whose numeric value is 22 select VXCRM.
std::string productoDeOrdenes(std::string_view ordenes);
// The WSDL address that the settings choose.
std::string elegirUrlServicio(Entorno& entorno);

class Inicio {
  public:
    Inicio(Entorno& entorno, Caminos& caminos, platform::MarcaInstancia& instancia)
        : entorno_(entorno), caminos_(caminos), instancia_(instancia) {}

    // `ordenes`: the process's arguments joined by one blank, taken whole. Returns the exit code.
    int Main(std::string_view ordenes);

  private:
    void preparar(std::string_view ordenes);
    int caminoInteractivo(std::string_view ordenes);
    int caminoDesatendido();

    Entorno& entorno_;
    Caminos& caminos_;
    platform::MarcaInstancia& instancia_;
};

}  // namespace tarvoline::core
