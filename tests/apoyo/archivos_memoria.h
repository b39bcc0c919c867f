// A file system in memory, with the manners of the real one: case ignored, both separators, locks between
// handles, share modes, the same error numbers. It also knows what has reached the "device", so that a test
// can cut the power: perderNoSincronizado() throws away any part of what was not synchronised.
//
// Relative paths lie below the root. Safe between threads.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/archivos.h"

namespace tarvoline::pruebas {

namespace memoria {
struct Interior;
struct Nodo;
}  // namespace memoria

class ArchivosMemoria final : public platform::SistemaArchivos {
  public:
    ArchivosMemoria();
    ~ArchivosMemoria() override;

    // A file, with its folders, as if it had been there and safe for ever; replaces one.
    void sembrar(std::string_view ruta, std::string_view contenido);
    void sembrarDirectorio(std::string_view ruta);

    // Power failure and restart: of the writes, cuts, names made, changed and removed since they were last
    // synchronised (Archivo::sincronizar for the content, sincronizarDirectorio for the names) any part
    // survives, in sectors of 512 bytes. Equal seeds lose equally. Handles open until now answer nothing but
    // errors.
    void perderNoSincronizado(std::uint64_t semilla);

    // All paths, folders with a final "/", sorted.
    std::vector<std::string> todas();

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
    struct Lugar;
    Lugar localizar(std::string_view ruta) const;
    void cambiarNombres(std::vector<std::pair<Lugar*, std::shared_ptr<memoria::Nodo>>> cambios);
    std::shared_ptr<memoria::Nodo> nuevoNodo(bool esDirectorio);
    std::shared_ptr<memoria::Nodo> sembrarNodo(std::string_view ruta, bool esDirectorio);

    std::shared_ptr<memoria::Interior> interior_;
};

}  // namespace tarvoline::pruebas
