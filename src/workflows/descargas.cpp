#include "workflows/descargas.h"

#include "core/texto.h"
#include "workflows/historico.h"
#include "workflows/lista.h"
#include "workflows/listados.h"
#include "workflows/panel.h"
#include "workflows/temporales.h"
#include "workflows/transferencia.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoNoCompletado = 1227;
constexpr int textoAbrir = 2244;

}  // namespace

void Descargas::Descargar_Click() {
    auto& panel = flujos_.panel();
    panel.entrada([&] {
        panel.Desabilitar_Formulario(false);
        const auto tipo = flujos_.listados().VistaActual();
        if (tipo.empty()) {
            return;
        }
        try {
            const auto nombre = core::Recortar(vista().fx1.celda(vista().fx1.Row, columna_rejilla::nombre));
            if (flujos_.transferencia().DescargarArchivo(tipo, {})) {
                flujos_.historico().anotarHecho(estado().gUsuario +
                                                estado().gTextosHistorico[core::haBajadoArchivo] + nombre);
            }
        } catch (const std::exception& error) {
            entorno_.escritorio.Mensaje({std::string(error.what()) + "\r\n" + texto(textoNoCompletado),
                                         core::Icono::exclamacion,
                                         {}});
        }
    });
}

void Descargas::fx1_DblClick() {
    if (vista().fx1.Row < 1) {
        return;  // the headings are no file
    }
    auto& panel = flujos_.panel();
    panel.entrada([&] {
        const auto& rejilla = vista().fx1;
        const auto nombre = rejilla.celda(rejilla.Row, columna_rejilla::nombre);
        const auto pregunta = texto(textoAbrir) + " " +
                              rejilla.celda(rejilla.Row, columna_rejilla::descripcion) + " = " +
                              rejilla.celda(rejilla.Row, columna_rejilla::tamano) + "?";
        if (!entorno_.escritorio.Preguntar({pregunta, core::Icono::informacion, "Tarvoline"})) {
            return;
        }
        abrir(nombre);
    });
}

void Descargas::List1_Click(int indice) {
    flujos_.panel().entrada([&] {
        if (indice >= 0 && indice < static_cast<int>(vista().List1.size())) {
            vista().elegidoList1 = indice;
            abrir(vista().List1[static_cast<std::size_t>(indice)]);
        }
    });
}

void Descargas::abrir(const std::string& nombre) {
    auto& panel = flujos_.panel();
    const auto tipo = flujos_.listados().VistaActual();
    if (tipo.empty()) {
        return;
    }
    panel.Desabilitar_Formulario(false);
    // Without a name the transfer tells that nothing is chosen.
    const bool hayNombre = !core::Recortar(nombre).empty();
    const auto destino = hayNombre ? flujos_.temporales().rutaDescarga(nombre) : std::string();
    flujos_.transferencia().AbrirArchivoServicio(tipo, destino);
    panel.Desabilitar_Formulario(true);
}

}  // namespace tarvoline::workflows
