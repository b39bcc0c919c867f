// The start: prepares the program-wide state and takes one of two roads, decided by the command line alone.
//
//   command line            product    road          interrupted upload
//   empty                   VELDORIX   window        asks whether to go on (VXCRM's, when only that has one)
//   "2"                     VELDORIX   window        left alone
//   "22"                    VXCRM      window        left alone
//   "Y", "y"                VXCRM      unattended    goes on
//   other, Val of it is 22  VXCRM      unattended    goes on
//   any other text          VELDORIX   unattended    goes on
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "core/entorno.h"
#include "platform/procesos.h"

namespace tarvoline::core {

// Exit codes of the program.
namespace salida {
inline constexpr int bien = 0;            // window closed; or all sent, or nothing to do
inline constexpr int noArranca = 1;       // the reason stands in a box, unattended in the log
inline constexpr int empresaFallida = 3;  // a pending company or the interrupted upload was not sent
inline constexpr int otraInstancia = 11;  // unattended, and another instance runs: nothing was done
inline constexpr int senal = 128;         // ended by a signal: this plus its number
}  // namespace salida

// What the start needs from the floors above; the entry hands in the fulfilment.
class Caminos {
  public:
    Caminos() = default;
    Caminos(const Caminos&) = delete;
    Caminos& operator=(const Caminos&) = delete;
    virtual ~Caminos() = default;
    // The interrupted upload goes on; a text that is not empty is a message for the user.
    // Estado::gInterrumpido is up when it did not finish.
    virtual std::string ContinuarSubida() = 0;
    // Works through the pending companies, noting each in Estado::resumen. True when none of them failed.
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
// The WSDL address that the settings choose: the public service, or the host of key IP (section NETBACKUP of
// the product); one that contains "localhost" takes its host from key IP of section qzback instead.
std::string elegirUrlServicio(Entorno& entorno);

// The parts of the start that every program needs, in this order, the product being chosen between them:
// folders, history phrases and the language table (throws ErrorIdioma), with a word in the log for settings
// that could not be understood; then display unit, service folder and address.
void prepararTextos(Entorno& entorno);
void prepararServicio(Entorno& entorno);

class Inicio {
  public:
    // `rutaEstado`: the status file of unattended runs (core/estado_ejecucion.h). All others are borrowed and
    // must outlive this object.
    Inicio(Entorno& entorno, Caminos& caminos, platform::MarcaInstancia& instancia, std::string rutaEstado)
        : entorno_(entorno), caminos_(caminos), instancia_(instancia), rutaEstado_(std::move(rutaEstado)) {}

    // `ordenes`: the process's arguments joined by one blank, taken whole. Returns the exit code.
    // FinDePrograma and errors of the start end here.
    int Main(std::string_view ordenes);

  private:
    void preparar(std::string_view ordenes);
    void elegirProducto(std::string_view ordenes);
    int tomarCamino(std::string_view ordenes);

    int caminoInteractivo(std::string_view ordenes);
    bool reanudarConPregunta();
    void olvidarSubida();
    void prepararVentana();

    int caminoDesatendido();
    bool reanudarSinPregunta();
    bool subirPendientes();
    void grabarEstado(std::chrono::system_clock::time_point inicio, int codigo);

    std::string subidaInterrumpida(std::string_view producto) const;

    Entorno& entorno_;
    Caminos& caminos_;
    platform::MarcaInstancia& instancia_;
    std::string rutaEstado_;
    std::string motivo_;  // why the run did not start, or ended early
};

}  // namespace tarvoline::core
