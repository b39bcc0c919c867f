#include "data/datos_comunes.h"

#include "data/utilidades.h"

namespace tarvoline::data {

namespace {

using platform::Apertura;
using platform::Comparticion;
using platform::ErrorArchivo;

constexpr std::size_t lugarNumero = 5;  // of the company number in a file name
constexpr std::size_t cifrasNumero = 2;

std::string carpetaPorDefecto(const CapaDatos& capa, std::string_view clave) {
    const bool deMonedas = core::igualSinCaja(clave, clave_comun::monedas);
    return core::conSeparadorFinal(CarpetaAplicacion(capa.carpetas, deMonedas ? "Conceptos" : ""));
}

bool esDeLaEmpresa(const CapaDatos& capa, std::string_view archivo) {
    const auto& numero = capa.enVigor.gEmpresaActual;
    return !numero.empty() && archivo.size() >= lugarNumero + cifrasNumero &&
           archivo.substr(lugarNumero, cifrasNumero) == numero;
}

bool seAbre(CapaDatos& capa, const std::string& ruta) {
    try {
        capa.archivos.abrir(ruta, Apertura::lectura, Comparticion::compartida);
        return true;
    } catch (const ErrorArchivo&) {
        return false;
    }
}

// Makes `carpeta` the folder from now on, with the file in it when the program ships one.
std::string estrenar(CapaDatos& capa, std::string_view clave, const std::string& carpeta,
                     std::string_view archivo) {
    if (capa.ajustes.leerCarpeta(clave) != carpeta) GrabarAjuste(capa, clave, carpeta);
    CrearCarpetas(capa.carpetas, carpeta);
    auto ruta = carpeta + std::string(archivo);
    const auto enviada = CarpetaPrograma(capa.carpetas) + std::string(archivo);
    try {
        if (!platform::existe(capa.archivos, ruta) && platform::existe(capa.archivos, enviada)) {
            platform::escribirAtomico(capa.archivos, ruta, platform::leerTodo(capa.archivos, enviada));
        }
    } catch (const ErrorArchivo& error) {
        capa.avisar(error.what());
    }
    return ruta;
}

}  // namespace

std::string RutaDatoComun(CapaDatos& capa, std::string_view clave, std::string_view archivo) {
    if (esDeLaEmpresa(capa, archivo)) return capa.enVigor.gDirectorioEmpresa + std::string(archivo);
    const auto ajuste = capa.ajustes.leerCarpeta(clave);
    if (archivo.empty()) return ajuste.empty() ? carpetaPorDefecto(capa, clave) : ajuste;
    if (!ajuste.empty() && seAbre(capa, ajuste + std::string(archivo))) return ajuste + std::string(archivo);

    const auto carpeta = carpetaPorDefecto(capa, clave);
    const bool yaEraEsa = ajuste.empty() || ajuste == carpeta;
    if (yaEraEsa) {
        auto ruta = estrenar(capa, clave, carpeta, archivo);
        if (seAbre(capa, ruta)) return ruta;
    }
    const auto pedida = (yaEraEsa ? carpeta : ajuste) + std::string(archivo);
    capa.mostrar(
        {"Archivo " + pedida + " no está disponible ... se utilizará " + carpeta + std::string(archivo),
         core::Icono::exclamacion, "Veldorix"});
    return estrenar(capa, clave, carpeta, archivo);
}

}  // namespace tarvoline::data
