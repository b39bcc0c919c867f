#include "workflows/historico.h"

#include <algorithm>

#include "core/texto.h"
#include "workflows/configuracion_empresa.h"
#include "workflows/lista.h"
#include "workflows/panel.h"

namespace tarvoline::workflows {

namespace {

// Date and time without the seconds: what is left of "25/12/2025 13:45:10" is "25/12/2025 13:45".
std::string sinSegundos(std::string_view momento) {
    const auto entero = core::Recortar(momento);
    return entero.substr(0, entero.size() - std::min<std::size_t>(entero.size(), 3));
}

}  // namespace

std::string Historico::GrabarEntradaHistorico(std::string_view texto) {
    if (estado().gRefrescando) {
        return {};
    }
    auto cliente = flujos_.nuevoCliente();
    const auto resultado = cliente.GrabarHistorico(flujos_.enVigor(), texto);
    if (core::esError(resultado)) {
        entorno_.escritorio.Mensaje({resultado, core::Icono::exclamacion, {}});
    }
    return {};
}

void Historico::anotarHecho(std::string_view texto) {
    try {
        GrabarEntradaHistorico(texto);
    } catch (const std::exception& error) {
        entorno_.registro.aviso(std::string("history: ") + error.what());
        entorno_.escritorio.Mensaje({error.what(), core::Icono::exclamacion, std::string(tituloPrograma)});
    }
}

void Historico::ListarHistorico(std::string_view filtro) {
    auto cliente = flujos_.nuevoCliente();
    flujos_.configuracion().CargarConfiguracionEmpresa("");
    const auto resultado = cliente.LeerHistorico(flujos_.enVigor(), filtro);
    if (core::esError(resultado)) {
        return;
    }
    vista().listaLeida = true;
    flujos_.lista().PrepararGrid(true);
    auto& rejilla = vista().fx1;
    const auto entradas = service::leerHistorico(resultado);
    rejilla.ponerFilas(std::max(2, static_cast<int>(entradas.size()) + 1));
    int fila = 0;
    for (const auto& entrada : entradas) {
        ++fila;
        const auto momento = sinSegundos(entrada.momento);
        const auto columna = core::Recortar(entrada.columna);
        rejilla.ponerCelda(fila, columna_rejilla::descripcion, entrada.texto);
        rejilla.ponerCelda(fila, columna_rejilla::fecha, momento);
        rejilla.ponerCelda(fila, columna_rejilla::tamano, columna);
        rejilla.ponerCelda(fila, columna_rejilla::ordenFecha, Lista::claveFecha(momento));
        rejilla.ponerCelda(fila, columna_rejilla::ordenTamano, columna);
    }
    vista().avisar(core::Parte::rejilla);
}

}  // namespace tarvoline::workflows
