#include "workflows/personales.h"

#include <exception>

#include "core/carpetas.h"
#include "core/texto.h"
#include "workflows/configuracion_empresa.h"
#include "workflows/historico.h"
#include "workflows/listados.h"
#include "workflows/panel.h"
#include "workflows/transferencia.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoSubido = 2248;
constexpr std::string_view tipoPersonal = "PERSONAL";

}  // namespace

void Personales::Subir_Click() {
    flujos_.panel().entrada([&] {
        const auto elegido = entorno_.escritorio.ElegirArchivo(
            {{}, {"*.*", "*.*"}, entorno_.almacen.Leer("UltimarutaArchivo", "BACKUP"), "*.*"});
        if (!elegido || elegido->empty()) {
            estado().gInterrumpido = true;
            return;
        }
        entorno_.almacen.Grabar("UltimarutaArchivo", core::SepararRuta(*elegido).directorio, "BACKUP");
        subir(*elegido);
    });
}

bool Personales::subir(std::string_view archivo) {
    auto& panel = flujos_.panel();
    panel.Desabilitar_Formulario(false);
    flujos_.configuracion().CargarConfiguracionEmpresa("");
    const auto resultado = flujos_.transferencia().SubirArchivo(archivo, tipoPersonal, true, 1);
    panel.Desabilitar_Formulario(true);
    if (resultado == "NO") {
        return false;
    }
    const auto nombre = core::SoloNombre(archivo);
    if (estado().gInterrumpido) {
        // What arrived is no file. Before the first piece an older file of that name is still whole.
        if (flujos_.transferencia().piezasEnviadas() > 0) {
            flujos_.listados().EliminarArchivoServidor(tipoPersonal, nombre);
        }
        return false;
    }
    if (!resultado.empty()) {
        entorno_.escritorio.Mensaje({resultado, core::Icono::exclamacion, {}});
        return false;
    }
    refrescarLista();
    entorno_.escritorio.Mensaje({texto(textoSubido), core::Icono::informacion, {}});
    flujos_.historico().anotarHecho(estado().gUsuario + estado().gTextosHistorico[core::haSubidoArchivo] +
                                    nombre);
    return true;
}

// The file is up, whatever becomes of its list.
void Personales::refrescarLista() {
    const auto tipo = flujos_.listados().VistaActual();
    if (tipo.empty()) {
        return;
    }
    try {
        flujos_.listados().ListarArchivos(tipo);
    } catch (const std::exception& error) {
        entorno_.escritorio.Mensaje({error.what(), core::Icono::exclamacion, std::string(tituloPrograma)});
    }
}

}  // namespace tarvoline::workflows
