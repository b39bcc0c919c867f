// The temporary files of a packing run, made beside the archive and gone with the object that owns them.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <string>

#include "platform/archivos.h"

namespace tarvoline::zip {

// A new file beside `junto`, under a name that nobody has. Deleted at the end unless it was renamed.
class ArchivoTemporal {
  public:
    ArchivoTemporal(platform::SistemaArchivos& archivos, const std::string& junto);
    ~ArchivoTemporal() { descartar(); }
    ArchivoTemporal(const ArchivoTemporal&) = delete;
    ArchivoTemporal& operator=(const ArchivoTemporal&) = delete;

    platform::Archivo& archivo() { return *archivo_; }
    // Brings the content to the device and puts the file at `destino`, over what is there.
    void publicar(const std::string& destino);

  private:
    void descartar() noexcept;

    platform::SistemaArchivos& archivos_;
    std::string ruta_;
    std::unique_ptr<platform::Archivo> archivo_;
};

// Where finished pieces wait that memory has no room for. Any thread may append and read.
class Derrame {
  public:
    Derrame(platform::SistemaArchivos& archivos, std::string junto)
        : archivos_(archivos), junto_(std::move(junto)) {}

    // The position where `datos` now lie. The file is made at the first call.
    std::uint64_t agregar(std::span<const std::byte> datos);
    void leer(std::uint64_t posicion, std::span<std::byte> destino);

  private:
    platform::SistemaArchivos& archivos_;
    std::string junto_;
    std::mutex mutex_;  // guards all below
    std::unique_ptr<ArchivoTemporal> temporal_;
    std::uint64_t longitud_ = 0;
};

}  // namespace tarvoline::zip
