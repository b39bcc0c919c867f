#include "platform/rutas.h"

#include "platform/carpetas_sistema.h"

namespace tarvoline::platform {

namespace {

// Without separators at the end, but never less than a root.
std::string_view sinFinal(std::string_view ruta) {
    while (ruta.size() > 1 && esSeparador(ruta.back()))
        ruta.remove_suffix(1);
    return ruta;
}

}  // namespace

std::string carpetaDe(std::string_view ruta) {
    ruta = sinFinal(ruta);
    const std::size_t corte = ruta.find_last_of("/\\");
    if (corte == std::string_view::npos) return ".";
    return std::string(sinFinal(ruta.substr(0, corte == 0 ? 1 : corte)));
}

std::string nombreDe(std::string_view ruta) {
    ruta = sinFinal(ruta);
    const std::size_t corte = ruta.find_last_of("/\\");
    return std::string(corte == std::string_view::npos ? ruta : ruta.substr(corte + 1));
}

std::string unirRuta(std::string_view carpeta, std::string_view nombre) {
    while (!nombre.empty() && esSeparador(nombre.front()))
        nombre.remove_prefix(1);
    std::string ruta(carpeta);
    if (!ruta.empty() && !esSeparador(ruta.back())) ruta.push_back(separador);
    return ruta.append(nombre);
}

}  // namespace tarvoline::platform
