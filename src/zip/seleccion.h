// What a packing run puts in: the list of masks, names and folders, worked out to files on disk.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/archivos.h"
#include "zip/zip.h"

namespace tarvoline::zip {

struct Seleccionado : Entrada {
    bool esDirectorio = false;  // an empty folder; its name ends with "/"
    std::uint64_t longitud = 0;
    std::int64_t modificado = 0;  // nanoseconds since 1970-01-01 UTC
};

// In the order of `lista`; a folder's content is in name order. Each entry name appears once: the last input
// that claims it wins. Names and masks that match nothing are passed over. The file `excluido` (the archive
// itself) is left out wherever it lies.
std::vector<Seleccionado> seleccionar(platform::SistemaArchivos& archivos, std::string_view base,
                                      const std::vector<std::string>& lista, bool recursivo,
                                      std::string_view excluido);

}  // namespace tarvoline::zip
