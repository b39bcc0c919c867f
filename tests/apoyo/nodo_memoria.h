// The inside of the file system in memory: nodes, their locks, and what of them is safe.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "platform/archivos.h"

namespace tarvoline::pruebas::memoria {

using Bytes = std::vector<std::byte>;

struct Cerrojo {
    const void* duenno = nullptr;
    std::uint64_t desde = 0;
    std::uint64_t hasta = 0;  // first byte behind
    platform::TipoBloqueo tipo = platform::TipoBloqueo::compartido;
};

// A write, or a cut to `posicion` when there are no bytes.
struct CambioContenido {
    std::uint64_t posicion = 0;
    std::optional<Bytes> bytes;
    void aplicar(Bytes& contenido) const;
};

struct Nodo {
    bool esDirectorio = false;
    std::uint64_t identidad = 0;
    std::int64_t modificado = 0;

    Bytes datos;
    Bytes datosSeguros;
    std::vector<CambioContenido> pendientes;

    std::map<std::string, std::shared_ptr<Nodo>> hijos;
    std::map<std::string, std::shared_ptr<Nodo>> hijosSeguros;

    std::vector<Cerrojo> cerrojos;

    void cambiar(CambioContenido cambio);
    void asegurarContenido();
    // Another handle's lock that bars `rango` for `tipo`.
    bool hayConflicto(const void* duenno, platform::Rango rango, platform::TipoBloqueo tipo) const;
    // Takes `rango` out of the owner's locks.
    void soltar(const void* duenno, platform::Rango rango);
};

// Names given or taken in one step: a rename is two of them.
struct CambioNombre {
    std::shared_ptr<Nodo> carpeta;
    std::string nombre;
    std::shared_ptr<Nodo> nodo;  // null: the name goes
};
using PasoNombres = std::vector<CambioNombre>;

struct Interior {
    std::recursive_mutex mutex;  // a refused open destroys its handle while the system holds it
    std::condition_variable_any liberado;
    std::shared_ptr<Nodo> raiz = std::make_shared<Nodo>();
    std::vector<PasoNombres> pendientes;
    std::uint64_t siguienteIdentidad = 1;
    std::int64_t tiempo = 1'000'000'000;
    int arranque = 0;  // counts the power failures

    std::int64_t tic() { return tiempo += 1'000'000'000; }
};

std::unique_ptr<platform::Archivo> abrirNodo(std::shared_ptr<Interior> interior, std::shared_ptr<Nodo> nodo,
                                             std::string ruta, bool escribible,
                                             platform::Comparticion comparticion);

// Rolls the tree back to what is safe, with any part of the rest.
void perder(Interior& interior, std::mt19937_64& azar);

[[noreturn]] void fallar(int numero, const std::string& ruta);

}  // namespace tarvoline::pruebas::memoria
