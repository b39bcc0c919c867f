// A finished entry as libzip sees it: a source that tells method, sizes and checksum, so that its bytes go
// into the archive as they are.
#pragma once

#include <zip.h>

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <optional>

#include "zip/compresor.h"

namespace tarvoline::zip {

// Refers to the result and the spill file it was made of; must outlive the zip_t that uses it.
class FuenteEntrada {
  public:
    FuenteEntrada(const Comprimida& entrada, Derrame& derrame, std::time_t modificado)
        : entrada_(entrada), derrame_(derrame), modificado_(modificado) {}

    zip_source_t* crear(zip_t* archivo);
    // What the spill file threw, if it did.
    const std::optional<platform::ErrorArchivo>& fallo() const { return fallo_; }

  private:
    static zip_int64_t llamada(void* estado, void* datos, zip_uint64_t longitud, zip_source_cmd_t orden);
    zip_int64_t atender(void* datos, zip_uint64_t longitud, zip_source_cmd_t orden);
    zip_int64_t describir(void* datos) const;
    zip_int64_t leer(std::byte* destino, zip_uint64_t longitud);

    const Comprimida& entrada_;
    Derrame& derrame_;
    std::time_t modificado_;
    std::size_t pieza_ = 0;      // where reading is: this piece,
    std::uint64_t enPieza_ = 0;  // at this byte of it
    std::optional<platform::ErrorArchivo> fallo_;
};

}  // namespace tarvoline::zip
