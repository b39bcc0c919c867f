// Compresses the inputs of a packing run side by side.
//
// Every input is cut into pieces; workers take the pieces in order, read, sum and compress them, and keep the
// results: in memory while the budget lasts, in a spill file beside the archive after that. So memory has a
// bound whatever the company's size, one huge file keeps all workers busy, and a stop takes effect within a
// piece. The archive is written only when all results stand, which is why an input that fails half way
// leaves no trace in it.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/archivos.h"
#include "zip/deflactor.h"
#include "zip/derrame.h"
#include "zip/seleccion.h"
#include "zip/zip.h"

namespace tarvoline::zip {

// A finished piece of an entry.
struct Pieza {
    std::uint64_t longitud = 0;              // as it goes into the archive
    std::uint32_t crc = 0;                   // of the input's bytes
    Bytes memoria;                           // its bytes, or empty:
    std::optional<std::uint64_t> enDerrame;  // where they lie in the spill file
};

// The result for one input.
struct Comprimida {
    bool legible = false;
    bool deflactada = false;       // otherwise stored
    std::uint64_t longitud = 0;    // of the input
    std::uint64_t comprimida = 0;  // of all pieces
    std::uint32_t crc = 0;         // CRC-32 of the input
    std::vector<Pieza> piezas;
};

struct AjustesCompresor {
    int nivel = 9;
    unsigned hilos = 1;             // at least 1
    std::uint64_t presupuesto = 0;  // bytes
};

class Compresor {
  public:
    // `archivos` and `derrame` are used from several threads at once.
    Compresor(platform::SistemaArchivos& archivos, Derrame& derrame, const AjustesCompresor& ajustes);

    // One result for each of `entradas` (folders give an empty readable one). Returns codigo::bien, or why
    // the run ended: abortado, discoLleno, escritura, memoria. `progreso` is called on the caller's thread;
    // what it throws comes out of here after the workers have ended.
    int comprimir(const std::vector<Seleccionado>& entradas, std::vector<Comprimida>& resultado,
                  const Progreso& progreso);

  private:
    struct EnCurso;
    struct Tarea;
    struct Obrero;

    int pasada(std::vector<std::size_t> indices, bool comprimir, const Progreso& progreso);
    void vigilar(const Progreso& progreso);
    void trabajar() noexcept;
    std::optional<Tarea> siguiente();
    bool empezarSiguiente();
    void hacer(Obrero& obrero, const Tarea& tarea);
    bool leerPieza(Obrero& obrero, const Tarea& tarea);
    Pieza guardar(std::span<const std::byte> datos);
    void terminar(const Tarea& tarea, Pieza pieza);
    void contar(EnCurso& curso, std::uint64_t bytes);
    void completar(EnCurso& curso);
    void abandonar(const Tarea& tarea);
    void soltar(Comprimida& entrada);
    void fallar(int codigo);

    platform::SistemaArchivos& archivos_;
    Derrame& derrame_;
    AjustesCompresor ajustes_;
    std::uint64_t longitudPieza_;
    const std::vector<Seleccionado>* entradas_ = nullptr;
    std::uint64_t total_ = 0;
    bool comprimiendo_ = true;  // false when the level is 0, and in:
    bool repaso_ = false;       // the pass that stores what did not shrink

    std::mutex mutex_;  // guards all below, and the results while workers run
    std::condition_variable aviso_;
    std::vector<Comprimida>* resultado_ = nullptr;
    std::vector<std::size_t> cola_;
    std::size_t enCola_ = 0;
    std::shared_ptr<EnCurso> curso_;
    std::uint64_t hecho_ = 0;
    std::uint64_t retenido_ = 0;  // bytes of finished pieces in memory
    unsigned activos_ = 0;
    bool parar_ = false;
    int fallo_ = 0;
};

// The result code for a failure of the device that the archive is written to.
int codigoEscritura(const platform::ErrorArchivo& error);

}  // namespace tarvoline::zip
