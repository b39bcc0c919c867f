// The archive file as libzip sees it: a source over the file layer.
//
// Reading goes to the file at the path. Writing goes to a temporary file beside it, which takes the path over
// when libzip commits and is deleted otherwise, so the archive is the old one or the new one.
#pragma once

#include <zip.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/archivos.h"
#include "zip/derrame.h"

namespace tarvoline::zip {

// Must outlive the zip_t that was opened over it.
class FuenteArchivo {
  public:
    FuenteArchivo(platform::SistemaArchivos& archivos, std::string ruta);
    ~FuenteArchivo();
    FuenteArchivo(const FuenteArchivo&) = delete;
    FuenteArchivo& operator=(const FuenteArchivo&) = delete;

    // Asked now and then while the archive is written; false gives the writing up. It may throw: the writing
    // is given up then too, and relanzar() throws on.
    void alEscribir(std::function<bool()> seguir) { seguir_ = std::move(seguir); }

    // A new libzip source over this; the caller hands it to zip_open_from_source or frees it.
    zip_source_t* crear(zip_error_t* error);

    // What the file layer threw first, if anything did.
    const std::optional<platform::ErrorArchivo>& fallo() const { return fallo_; }
    bool abandonada() const { return abandonada_; }
    void relanzar() const {
        if (excepcion_) std::rethrow_exception(excepcion_);
    }

  private:
    static zip_int64_t llamada(void* estado, void* datos, zip_uint64_t longitud, zip_source_cmd_t orden);
    zip_int64_t atender(void* datos, zip_uint64_t longitud, zip_source_cmd_t orden);
    zip_int64_t atenderLectura(void* datos, zip_uint64_t longitud, zip_source_cmd_t orden);
    zip_int64_t atenderEscritura(void* datos, zip_uint64_t longitud, zip_source_cmd_t orden);
    zip_int64_t describir(void* datos);
    zip_int64_t leer(void* datos, zip_uint64_t longitud);
    zip_int64_t escribir(const void* datos, zip_uint64_t longitud);
    zip_int64_t confirmar();
    bool vaciarBufer();
    zip_int64_t fallar(int error, int delSistema = 0);

    platform::SistemaArchivos& archivos_;
    std::string ruta_;
    std::function<bool()> seguir_;
    zip_error_t error_{};

    std::unique_ptr<platform::Archivo> archivo_;
    std::uint64_t posicionLectura_ = 0;

    std::unique_ptr<ArchivoTemporal> temporal_;
    std::vector<std::byte> bufer_;       // written, but not yet in the temporary file;
    std::uint64_t posicionBufer_ = 0;    // it belongs here
    std::uint64_t longitudEscrita_ = 0;  // of all that was written

    std::optional<platform::ErrorArchivo> fallo_;
    std::exception_ptr excepcion_;
    bool abandonada_ = false;
};

}  // namespace tarvoline::zip
