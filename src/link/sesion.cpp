#include "link/sesion.h"

#include "core/texto.h"

namespace tarvoline::link {

void Sesion::entrar() {
    if (!empresa.abierta()) {
        throw ErrorEnlace(error_enlace::empresaNoAbierta,
                          "Empresa No Abierta ... Abrir Empresa y reintentar");
    }
    ponerEnVigor();
}

std::string Sesion::canalTexto() const {
    return core::conCeros(Canal, 3);
}

void Sesion::LimpiarPendientes() {
    pendientes.HayPendientes = false;
    pendientes.vaciar();
    resultados.inmovilizado.vaciar();
    resultados.datosGlobales.vaciar();
}

void Sesion::CerrarArchivos(bool deltodo) {
    if (deltodo) {
        empresa.gEmpresaActual.clear();
        pendientes.vaciar();
        ponerEnVigor();
    }
    // Last, since it may fail where closing waits for the disk.
    if (!ModoRemoto) contexto.cerrarTablas();
}

TablasAbiertas::TablasAbiertas(Sesion& sesion) : sesion_(sesion) {
    if (sesion.contexto.tablas().AbrirTablasEmpresa()) return;
    pasandoErrores(sesion.contexto.datos, "CerrarArchivos", [&] { sesion.CerrarArchivos(false); });
    throw platform::ErrorArchivo(platform::error_archivo::ruta, sesion.empresa.gDirectorioEmpresa,
                                 "no se han podido abrir las tablas de la empresa");
}

TablasAbiertas::~TablasAbiertas() {
    pasandoErrores(sesion_.contexto.datos, "CerrarArchivos", [this] { sesion_.CerrarArchivos(false); });
}

}  // namespace tarvoline::link
