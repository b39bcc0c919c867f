#include "data/actualizacion.h"

#include <algorithm>

#include "core/carpetas.h"
#include "data/acceso_archivo.h"
#include "data/vista_nombrada.h"

namespace tarvoline::data {

namespace {

float versionPrograma(const CapaDatos& capa) {
    return std::max(VersionDatos, static_cast<float>(capa.ajustes.LeerRegistro("Version").numero()));
}

bool esNumeroEmpresa(std::string_view numero) {
    return numero.size() == 2 && core::ValEntero(numero) > 0;
}

// Two programs may complete one company at the same time: whoever comes second finds the file made.
void crearSiFalta(platform::SistemaArchivos& archivos, const std::string& ruta) {
    if (platform::existe(archivos, ruta)) return;
    try {
        archivos.abrir(ruta, platform::Apertura::nuevo, platform::Comparticion::compartida);
    } catch (const platform::ErrorArchivo& error) {
        if (error.numero() != platform::error_archivo::yaExiste) throw;
    }
}

}  // namespace

std::string GuardaVersionDatos::Comprobar(std::string_view ruta) const {
    float version = 0;
    const bool leida = leerEmpresa(capa_, ruta, [&](platform::Archivo& archivo) {
        version = CabeceraEmpresa::leer(archivo).valor(cabecera::VERSION);
    });
    const float propia = versionPrograma(capa_);
    if (!leida || !(version > propia)) return std::string(respuestaBien);
    return "Los datos de la empresa son de la versión " + textoDeNumero(static_cast<double>(version), 7) +
           " y este programa trabaja con la " + textoDeNumero(static_cast<double>(propia), 7);
}

void GuardaVersionDatos::Actualizar(std::string_view ruta) const {
    std::string numero;
    exigirEmpresa(capa_, ruta, [&](platform::Archivo& archivo) {
        numero = CabeceraEmpresa::leer(archivo).texto(cabecera::COMUN);
    });
    if (!esNumeroEmpresa(numero)) return;
    const auto directorio = core::SepararRuta(ruta).directorio;
    for (const auto tabla : tablasEmpresa) {
        crearSiFalta(capa_.archivos, std::string(directorio).append(tabla).append(numero).append(".QZD"));
    }
}

}  // namespace tarvoline::data
