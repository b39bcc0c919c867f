#include "platform/posix/entorno_proceso.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace tarvoline::platform::posix {

namespace {

bool esEjecutable(const std::string& ruta) {
    struct stat datos {};
    return ::stat(ruta.c_str(), &datos) == 0 && S_ISREG(datos.st_mode) && ::access(ruta.c_str(), X_OK) == 0;
}

}  // namespace

std::optional<std::string> variable(const char* nombre) {
    const char* valor = std::getenv(nombre);
    if (valor == nullptr || *valor == '\0') return std::nullopt;
    return std::string(valor);
}

std::optional<std::string> buscarEjecutable(const std::string& nombre) {
    if (nombre.empty() || nombre.find('\0') != std::string::npos) return std::nullopt;
    if (nombre.find('/') != std::string::npos)
        return esEjecutable(nombre) ? std::optional(nombre) : std::nullopt;
    const std::string lista = variable("PATH").value_or("/usr/local/bin:/usr/bin:/bin");
    for (std::size_t desde = 0; desde <= lista.size();) {
        const std::size_t corte = std::min(lista.find(':', desde), lista.size());
        // An empty element would mean the current folder, where nobody installs commands.
        if (corte > desde) {
            std::string ruta = lista.substr(desde, corte - desde) + '/' + nombre;
            if (esEjecutable(ruta)) return ruta;
        }
        desde = corte + 1;
    }
    return std::nullopt;
}

}  // namespace tarvoline::platform::posix
