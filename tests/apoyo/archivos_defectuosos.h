// A file system that goes wrong where the test wants it, over a real one or one in memory.
//
//     ArchivosMemoria memoria;
//     ArchivosDefectuosos archivos(memoria);
//     archivos.fallar({.operacion = Operacion::escribir, .vez = 3, .numero = error_archivo::dispositivo});
//     archivos.fallar({.operacion = Operacion::renombrar, .mascara = "*.ini", .siempre = true});
//     archivos.cortarEscritura(2, 100);            // the second write writes 100 bytes, then fails
//     archivos.limitarDisco(1'000'000);            // so many bytes are left
//     archivos.cortarCorriente(17);                // at the 17th change the power goes
//     memoria.perderNoSincronizado(semilla);       // restart: what was not synchronised is lost in part
//     archivos.volverCorriente();
//
// "Change" is every call that changes something on disk: opening a file that is thereby made or emptied,
// writing, cutting, synchronising a file or folder, renaming, removing, making folders. All counts start at 1
// with the object or the last olvidarCuentas(). Several threads may read; changes come from one at a time.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "apoyo/archivos_memoria.h"
#include "platform/archivos.h"

namespace tarvoline::pruebas {

enum class Operacion {
    abrir,
    leer,
    escribir,
    truncar,
    sincronizar,
    bloquear,
    estado,
    borrar,
    renombrar,
    crearDirectorios,
    borrarDirectorio,
    listar,
    espacioLibre,
    sincronizarDirectorio,
};

// Thrown by every call between the power failure and the restart: no error that a program could handle.
class CorteDeCorriente : public std::runtime_error {
  public:
    CorteDeCorriente() : std::runtime_error("power failure") {}
};

struct Fallo {
    Operacion operacion = Operacion::escribir;
    int vez = 1;                // the how manieth call of that operation on a matching path, counted from now
    std::string mascara = "*";  // of the file's name
    int numero = platform::error_archivo::dispositivo;
    bool siempre = false;  // that call and all later ones
};

class ArchivosDefectuosos final : public platform::SistemaArchivos {
  public:
    // `base` is borrowed and must outlive this object.
    explicit ArchivosDefectuosos(platform::SistemaArchivos& base) : base_(base) {}

    void fallar(Fallo fallo);
    // The `vez`-th write from now puts `bytes` bytes (or all, if it has fewer) on disk and then fails.
    void cortarEscritura(int vez, std::size_t bytes, int numero = platform::error_archivo::dispositivo);
    // A disk with so many bytes left: what makes a file longer takes from them, what removes or shortens one
    // gives back. A write that does not fit writes what does and fails with discoLleno.
    void limitarDisco(std::uint64_t bytes) { libres_ = bytes; }
    // Takes back all of the above.
    void sanar();

    // Called before each call, from the thread that makes it; what it throws is the failure.
    using Antes = std::function<void(Operacion operacion, const std::string& ruta)>;
    void alEmpezar(Antes antes) { antes_ = std::move(antes); }

    // The power goes at the `cambio`-th change from now: that one may still get into the write cache (but
    // never returns), all later calls throw CorteDeCorriente. The restart is the lower file system's
    // perderNoSincronizado() and volverCorriente().
    void cortarCorriente(int cambio) { cortarEn_ = cambio; }
    void volverCorriente() {
        sinCorriente_ = false;
        cortarEn_ = 0;
    }

    int cuenta(Operacion operacion) const;
    void olvidarCuentas() { cuentas_.clear(); }

    std::unique_ptr<platform::Archivo> abrir(
        std::string_view ruta, platform::Apertura apertura,
        platform::Comparticion comparticion = platform::Comparticion::libre,
        unsigned permisos = 0666) override;
    std::optional<platform::EstadoArchivo> estado(std::string_view ruta) override;
    void borrar(std::string_view ruta) override;
    void renombrar(std::string_view origen, std::string_view destino) override;
    void crearDirectorios(std::string_view ruta, unsigned modo = 0755) override;
    void borrarDirectorio(std::string_view ruta) override;
    std::vector<platform::EntradaDirectorio> listar(std::string_view directorio) override;
    std::uint64_t espacioLibre(std::string_view ruta) override;
    void sincronizarDirectorio(std::string_view ruta) override;
    std::string resolver(std::string_view ruta) override;

  private:
    class Abierto;
    struct Corte {
        int vez = 0;
        std::size_t bytes = 0;
        int numero = 0;
    };

    // Counts the call and throws what is due.
    void entrar(Operacion operacion, std::string_view ruta);
    void cambiado();
    // True while the change is made at which the power goes.
    bool cortaAhora() const { return cortarEn_ == 1; }
    std::uint64_t longitudDe(std::string_view ruta);
    void devolver(std::uint64_t bytes);

    platform::SistemaArchivos& base_;
    std::vector<Fallo> fallos_;
    std::vector<Corte> cortes_;
    std::optional<std::uint64_t> libres_;
    Antes antes_;
    std::mutex mutex_;  // of the counts and the failures to come
    std::map<Operacion, int> cuentas_;
    int cortarEn_ = 0;
    bool sinCorriente_ = false;
};

}  // namespace tarvoline::pruebas
