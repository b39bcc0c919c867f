#include "platform/posix/resolucion.h"

#include <dirent.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>

#include "platform/archivos.h"
#include "platform/caja.h"
#include "platform/posix/errores.h"
#include "platform/rutas.h"

namespace tarvoline::platform::posix {

namespace {

// A link counts as a name even when it leads nowhere: what is made under that name is made through it.
bool hayNombre(const std::string& ruta) {
    struct stat datos {};
    return ::lstat(ruta.c_str(), &datos) == 0;
}

// The first name of `carpeta`, in byte order, that equals `nombre` but for case; empty when none does.
std::string buscarNombre(const std::string& carpeta, const std::string& nombre) {
    const auto cerrar = [](DIR* directorio) { ::closedir(directorio); };
    const std::unique_ptr<DIR, decltype(cerrar)> directorio(::opendir(carpeta.c_str()), cerrar);
    std::string hallado;
    if (!directorio) return hallado;
    while (const dirent* entrada = ::readdir(directorio.get())) {
        const std::string_view candidato = entrada->d_name;
        if ((hallado.empty() || candidato < hallado) && igualPlegado(candidato, nombre)) hallado = candidato;
    }
    return hallado;
}

std::string resolverNormal(const std::string& ruta) {
    if (ruta.empty() || ruta == "/" || ruta == "." || hayNombre(ruta)) return ruta;
    const bool sinCarpeta = ruta.find('/') == std::string::npos;
    const std::string nombre = nombreDe(ruta);
    const std::string carpeta = resolverNormal(carpetaDe(ruta));
    const std::string prefijo = sinCarpeta ? std::string() : carpeta;
    std::string tal = unirRuta(prefijo, nombre);
    if (nombre == ".." || hayNombre(tal)) return tal;
    const std::string otro = buscarNombre(carpeta, nombre);
    return otro.empty() ? tal : unirRuta(prefijo, otro);
}

// As most paths come.
bool esNormal(std::string_view ruta) {
    const bool alFinal = ruta.size() > 1 && ruta.back() == '/';
    return !alFinal && ruta.find('\\') == std::string_view::npos && ruta.find("//") == std::string_view::npos;
}

}  // namespace

std::string normalizar(std::string_view ruta) {
    if (ruta.find('\0') != std::string_view::npos) lanzar(EINVAL, ruta.substr(0, ruta.find('\0')));
    if (esNormal(ruta)) return std::string(ruta);
    std::string limpia;
    limpia.reserve(ruta.size());
    for (const char c : ruta) {
        const char propio = esSeparador(c) ? '/' : c;
        if (propio != '/' || limpia.empty() || limpia.back() != '/') limpia.push_back(propio);
    }
    if (limpia.size() > 1 && limpia.back() == '/') limpia.pop_back();
    return limpia;
}

std::string resolverRuta(std::string_view ruta) {
    return resolverNormal(normalizar(ruta));
}

}  // namespace tarvoline::platform::posix
