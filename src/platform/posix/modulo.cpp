#include "platform/modulo.h"

#include <dlfcn.h>

#include <filesystem>

namespace tarvoline::platform {

namespace {

// Something of this very file to ask the loader about.
const char lugar = 0;

}  // namespace

std::string carpetaDelModulo() {
    Dl_info datos{};
    if (::dladdr(&lugar, &datos) == 0 || datos.dli_fname == nullptr) return {};
    std::error_code error;
    const auto ruta = std::filesystem::canonical(datos.dli_fname, error);
    if (error) return {};
    const std::u8string carpeta = ruta.parent_path().u8string();
    return {carpeta.begin(), carpeta.end()};
}

}  // namespace tarvoline::platform
