// Tells whether a file need not be read again: it was still when it was read, and is the same now.
#pragma once

#include <optional>
#include <string_view>

#include "platform/archivos.h"

namespace tarvoline::platform {

// How a file was before it was read: identity, size and date, or that there was none. One that had been
// written less than two seconds before bears no valid mark, since it could be written again within the grain
// of its date. Members throw ErrorArchivo.
class MarcaArchivo {
  public:
    // Valid for no file.
    MarcaArchivo() = default;
    // Of the file at `ruta` as it is now. To be taken before the file is read.
    MarcaArchivo(SistemaArchivos& archivos, std::string_view ruta);

    // True when what was read of `ruta` after this mark is what it holds now.
    bool vale(SistemaArchivos& archivos, std::string_view ruta) const;

  private:
    bool quieto_ = false;
    std::optional<EstadoArchivo> estado_;
};

}  // namespace tarvoline::platform
