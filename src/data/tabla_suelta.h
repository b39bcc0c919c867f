// A table by the path of its .QZD, outside any company: what tools look at, check and key anew. Records count
// from 1, file positions are 64-bit.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "data/codec.h"
#include "data/definicion_tabla.h"
#include "platform/archivos.h"

namespace tarvoline::data {

// How far a long work has come; `total` may be 0.
using Progreso = std::function<void(std::uint64_t hecho, std::uint64_t total)>;

struct RegistroLeido {
    std::int64_t numero = 0;
    EstadoRegistro estado = EstadoRegistro::sinEscribir;
    std::string_view bytes;  // as on disk; empty when the file does not hold all of it
};

// Reads up to destino.size() bytes from `posicion`, fewer only at the end of the file.
using LeerBytes = std::function<std::size_t(std::uint64_t posicion, std::span<std::byte> destino)>;

// The places that a data file of so many bytes gives: its records, one cut off at the end among them. Each
// place takes a record number, whatever stands there.
std::int64_t lugaresDe(const DefinicionTabla& definicion, std::uint64_t longitud);

// Calls `paso` for every place from `desde` to `hasta`, in order, reading in blocks. One that is cut off or
// lies behind the end of the file comes as `sinEscribir`.
void recorrerLugares(const DefinicionTabla& definicion, std::int64_t desde, std::int64_t hasta,
                     const LeerBytes& leer, const std::function<void(const RegistroLeido&)>& paso);

// The definition of the table at `rutaDatos`: `directorio` holds it under the first five letters of the
// table's name. Throws platform::ErrorArchivo, ErrorDefinicion (also for a name that is no table's).
std::shared_ptr<const DefinicionTabla> definicionDeTabla(platform::SistemaArchivos& archivos,
                                                         std::string_view directorio,
                                                         std::string_view rutaDatos);
// The key file beside a data file.
std::string rutaClavesDe(std::string_view rutaDatos);

// Members throw platform::ErrorArchivo.
class TablaSuelta {
  public:
    enum class Acceso {
        mirar,  // read only. Others work on meanwhile; their locks do not hold it up where the system lets it
        sola,   // to read, but nobody else may have the table open: permisoDenegado when somebody has
    };
    TablaSuelta(platform::SistemaArchivos& archivos, std::string rutaDatos,
                std::shared_ptr<const DefinicionTabla> definicion, Acceso acceso = Acceso::mirar);

    const std::string& rutaDatos() const { return rutaDatos_; }
    const DefinicionTabla& definicion() const { return *definicion_; }
    platform::Archivo& archivo() { return *archivo_; }

    std::int64_t lugares() { return lugaresDe(*definicion_, archivo_->longitud()); }
    // Bytes of a record that is cut off at the end of the file.
    std::uint64_t sobrante();
    std::size_t leer(std::uint64_t posicion, std::span<std::byte> destino);
    // recorrerLugares() on this table.
    void recorrer(std::int64_t desde, std::int64_t hasta,
                  const std::function<void(const RegistroLeido&)>& paso);

  private:
    std::string rutaDatos_;
    std::shared_ptr<const DefinicionTabla> definicion_;
    std::unique_ptr<platform::Archivo> archivo_;
};

}  // namespace tarvoline::data
