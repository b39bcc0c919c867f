// Commands on stored files: download and deletion.
#include <algorithm>

#include "consola/ordenes.h"
#include "core/carpetas.h"
#include "workflows/historico.h"
#include "workflows/lista.h"
#include "workflows/listados.h"
#include "workflows/transferencia.h"

namespace tarvoline::consola {

namespace {

constexpr int columnaNombre = 2;

}  // namespace

void Ordenes::bajar(Informe& informe) {
    if (!mostrarLista(informe)) {
        return;
    }
    const auto tipo = flujos_.listados().VistaActual();
    for (const auto& nombre : opciones_.nombres) {
        if (!elegirFila(nombre)) {
            fallar(informe, salida::noEncontrado, nombre);
            escritorio_.Mensaje(
                {montaje_.estado().gErrores(188) + ": " + nombre, core::Icono::exclamacion, {}});
            continue;
        }
        // A stored name is data: only its last part may name a file here.
        escritorio_.archivoElegido = opciones_.destino.empty() ? core::SoloNombre(nombre) : opciones_.destino;
        escritorio_.respuestaSi = opciones_.sobrescribir;
        if (!flujos_.transferencia().DescargarArchivo(tipo, {})) {
            fallar(informe, salida::fallida, ultimoFallo().empty() ? nombre : ultimoFallo());
            continue;
        }
        auto& estado = montaje_.estado();
        flujos_.historico().GrabarEntradaHistorico(estado.gUsuario +
                                                   estado.gTextosHistorico[core::haBajadoArchivo] + nombre);
        informe.dato("bajado", "Bajado:", escritorio_.archivoElegido);
    }
}

void Ordenes::borrar(Informe& informe) {
    escritorio_.respuestaSi = true;
    for (const auto& nombre : opciones_.nombres) {
        if (!mostrarLista(informe)) {
            return;
        }
        if (!elegirFila(nombre)) {
            fallar(informe, salida::noEncontrado, nombre);
            escritorio_.Mensaje(
                {montaje_.estado().gErrores(188) + ": " + nombre, core::Icono::exclamacion, {}});
            continue;
        }
        flujos_.lista().Eliminar_Click();
        const auto& quedan = montaje_.vista().List1;
        if (std::ranges::find(quedan, nombre) != quedan.end()) {
            fallar(informe, salida::fallida, ultimoFallo().empty() ? nombre : ultimoFallo());
            continue;
        }
        informe.dato("borrado", "Borrado:", nombre);
    }
}

}  // namespace tarvoline::consola
