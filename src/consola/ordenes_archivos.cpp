// Commands on stored files: download and deletion.
#include <algorithm>

#include "consola/ordenes.h"
#include "core/carpetas.h"
#include "workflows/historico.h"
#include "workflows/lista.h"
#include "workflows/listados.h"
#include "workflows/transferencia.h"

namespace tarvoline::consola {

void Ordenes::bajar(Informe& informe) {
    auto& estado = montaje_.estado();
    auto& archivos = montaje_.entorno().archivos;
    if (!opciones_.destino.empty() && opciones_.nombres.size() > 1 && !esCarpeta(opciones_.destino)) {
        fallar(informe, salida::uso, "Varios archivos no caben en uno: " + opciones_.destino);
        return;
    }
    if (!mostrarLista(informe)) {
        return;
    }
    const auto tipo = flujos_.listados().VistaActual();
    escritorio_.respuestaSi = opciones_.sobrescribir;
    paraCada(informe, "bajados", "Bajado:", [&](const std::string& nombre) -> std::optional<std::string> {
        if (!elegirFila(informe, nombre)) {
            return std::nullopt;
        }
        // A stored name is data: only its last part may name a file here.
        const auto local = core::SoloNombre(nombre);
        auto& destino = escritorio_.archivoElegido;
        destino = opciones_.destino.empty()      ? local
                  : esCarpeta(opciones_.destino) ? core::conSeparadorFinal(opciones_.destino) + local
                                                 : opciones_.destino;
        if (!flujos_.transferencia().DescargarArchivo(tipo, {})) {
            return std::nullopt;
        }
        flujos_.historico().GrabarEntradaHistorico(estado.gUsuario +
                                                   estado.gTextosHistorico[core::haBajadoArchivo] + nombre);
        return archivos.resolver(destino);
    });
}

bool Ordenes::esCarpeta(const std::string& ruta) const {
    const auto estado = montaje_.entorno().archivos.estado(ruta);
    return estado && estado->esDirectorio;
}

void Ordenes::borrar(Informe& informe) {
    escritorio_.respuestaSi = true;
    paraCada(informe, "borrados", "Borrado:", [&](const std::string& nombre) -> std::optional<std::string> {
        if (!mostrarLista(informe) || !elegirFila(informe, nombre)) {
            return std::nullopt;
        }
        flujos_.lista().Eliminar_Click();
        const auto& quedan = montaje_.vista().List1;
        return std::ranges::find(quedan, nombre) == quedan.end() ? std::optional(nombre) : std::nullopt;
    });
}

}  // namespace tarvoline::consola
