#include "data/acceso_archivo.h"

#include <memory>
#include <string>
#include <thread>

namespace tarvoline::data {

namespace {

using platform::ErrorArchivo;
using platform::TipoBloqueo;

// A file that is held is free again in a moment; one that is missing or a full disk is not.
bool puedePasar(const ErrorArchivo& error) {
    return error.numero() == platform::error_archivo::permisoDenegado ||
           error.numero() == platform::error_archivo::dispositivo;
}

// Waits for whoever holds part of an open file. A file that could not even be opened offers no range to wait
// for.
void esperarTurno(CapaDatos& capa, platform::Archivo* archivo, TipoBloqueo tipo) {
    if (archivo == nullptr) {
        std::this_thread::sleep_for(capa.reintentosEmpresa.espera / 10);
    } else if (archivo->bloquear(platform::todoElArchivo, tipo, capa.reintentosEmpresa.espera)) {
        archivo->desbloquear(platform::todoElArchivo);
    }
}

TipoBloqueo tipoPara(platform::Apertura apertura) {
    return apertura == platform::Apertura::lectura ? TipoBloqueo::compartido : TipoBloqueo::exclusivo;
}

using Handle = std::unique_ptr<platform::Archivo>;

// Opens and runs `paso`, until it goes through or the tries are used up: then the last error passes. The
// file, still open, is what it returns.
Handle repetir(CapaDatos& capa, std::string_view ruta, platform::Apertura apertura,
               const OperacionArchivo& paso) {
    for (int intento = 1;; ++intento) {
        Handle archivo;
        try {
            archivo = capa.archivos.abrir(ruta, apertura, platform::Comparticion::compartida);
            paso(*archivo);
            return archivo;
        } catch (const ErrorArchivo& error) {
            if (!puedePasar(error) || intento >= capa.reintentosEmpresa.intentos) throw;
        }
        esperarTurno(capa, archivo.get(), tipoPara(apertura));
    }
}

void bloquear(const CapaDatos& capa, std::string_view ruta, platform::Archivo& archivo,
              platform::Rango rango) {
    if (!capa.gMultiusuario || archivo.bloquear(rango, TipoBloqueo::exclusivo)) return;
    throw ErrorArchivo(platform::error_archivo::permisoDenegado, std::string(ruta),
                       "otro programa tiene ocupado el archivo de la empresa");
}

void avisarAbandono(const CapaDatos& capa, const ErrorArchivo& error) {
    capa.avisar(error.ruta() + ": " + error.what());
}

}  // namespace

bool leerEmpresa(CapaDatos& capa, std::string_view ruta, const OperacionArchivo& leer) {
    try {
        exigirEmpresa(capa, ruta, leer);
        return true;
    } catch (const ErrorArchivo& error) {
        avisarAbandono(capa, error);
        return false;
    }
}

void exigirEmpresa(CapaDatos& capa, std::string_view ruta, const OperacionArchivo& leer) {
    repetir(capa, ruta, platform::Apertura::lectura, leer);
}

void exigirCambioEmpresa(CapaDatos& capa, std::string_view ruta, const OperacionArchivo& cambiar,
                         platform::Rango rango) {
    repetir(capa, ruta, platform::Apertura::escritura, [&](platform::Archivo& archivo) {
        bloquear(capa, ruta, archivo, rango);
        cambiar(archivo);  // the lock ends with the handle
    });
}

void conEmpresaBloqueada(CapaDatos& capa, std::string_view ruta, const std::function<void()>& paso) {
    const Handle abierta =
        repetir(capa, ruta, platform::Apertura::escritura,
                [&](platform::Archivo& archivo) { bloquear(capa, ruta, archivo, platform::todoElArchivo); });
    paso();
}

void conTurnoEnTabla(CapaDatos& capa, std::string_view ruta, const std::function<void()>& paso) {
    constexpr platform::Rango turno{platform::byteCentinela + 4, 1};  // behind those of the insertions
    const Handle abierta =
        capa.archivos.abrir(ruta, platform::Apertura::escritura, platform::Comparticion::compartida);
    const Reintentos& reintentos = capa.reintentosEmpresa;
    for (int intento = 1; !abierta->bloquear(turno, TipoBloqueo::exclusivo, reintentos.espera); ++intento) {
        if (intento < reintentos.intentos) continue;
        throw ErrorArchivo(platform::error_archivo::permisoDenegado, std::string(ruta),
                           "otro programa trabaja en la tabla");
    }
    paso();  // the turn ends with the handle
}

bool cambiarEmpresa(CapaDatos& capa, std::string_view ruta, const OperacionArchivo& cambiar,
                    platform::Rango rango) {
    try {
        exigirCambioEmpresa(capa, ruta, cambiar, rango);
        return true;
    } catch (const ErrorArchivo& error) {
        if (error.numero() == platform::error_archivo::permisoDenegado) throw;
        avisarAbandono(capa, error);
        return false;
    }
}

}  // namespace tarvoline::data
