// What is stored, in memory: names, folders, kinds, lengths, and the room each user takes.
//
// The rows of the data base say which files there are; the files on disk say how long they are, and this
// index is built from both at the start. Thread-safe.
#pragma once

#include <atomic>
#include <compare>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::server {

// Where a client says a file is. Names are data, never paths. Folder and kind are compared without regard to
// case ("Datos" and "DATOS" are one folder), names exactly.
struct Ubicacion {
    std::int64_t usuario = 0;
    std::string raiz;  // the user's root folder on disk
    std::string carpeta;
    std::string tipo;  // upper case
    std::string nombre;
};

// What an account may hold: `bytes` over all its `usuarios`; 0 = nothing is known of a limit.
struct Cupo {
    std::vector<std::int64_t> usuarios;
    std::int64_t bytes = 0;
};

struct Guardado {
    std::int64_t id = 0;
    Ubicacion ubicacion;  // folder in the spelling that listings show
    std::string ruta;     // on disk; made of the id alone

    std::mutex cerrojo;                     // held by whoever writes or deletes
    bool borrado = false;                   // under `cerrojo`
    std::atomic<std::int64_t> longitud{0};  // that of the file on disk; written through the index
};
using GuardadoLeido = std::shared_ptr<Guardado>;  // null = there is none

class IndiceArchivos {
  public:
    GuardadoLeido buscar(const Ubicacion& ubicacion) const;
    // Replaces one of the same place.
    void poner(const GuardadoLeido& guardado);
    void quitar(const Guardado& guardado);

    // In order of name.
    std::vector<std::string> nombres(std::int64_t usuario, std::string_view carpeta,
                                     std::string_view tipo) const;
    // Folders with at least one file, in order of name.
    std::vector<std::string> carpetas(std::int64_t usuario) const;
    // The spelling under which the user's folder is listed: that of its first file, else as given.
    std::string grafia(std::int64_t usuario, const std::string& carpeta) const;
    std::int64_t ocupado(std::int64_t usuario) const;
    std::size_t cuantos(std::int64_t usuario) const;

    // Books the new length, unless the account would grow beyond its room: false then, and nothing changes.
    bool reservar(Guardado& guardado, std::int64_t longitud, const Cupo& cupo);
    void fijarLongitud(Guardado& guardado, std::int64_t longitud);

  private:
    struct Clave {
        std::int64_t usuario;
        std::string carpeta, tipo, nombre;
        auto operator<=>(const Clave&) const = default;
    };
    struct Totales {
        std::int64_t bytes = 0;
        std::size_t archivos = 0;
    };
    static Clave clave(const Ubicacion& ubicacion);
    void quitarSinCerrojo(const Clave& cual);

    mutable std::mutex cerrojo_;
    std::map<Clave, GuardadoLeido> guardados_;
    std::map<std::int64_t, Totales> totales_;
};

}  // namespace tarvoline::server
