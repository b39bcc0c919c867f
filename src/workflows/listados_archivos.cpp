// The part of the lists that looks at single files: their sizes, and their end.
#include <stdexcept>

#include "core/formato.h"
#include "core/texto.h"
#include "workflows/configuracion_empresa.h"
#include "workflows/lista.h"
#include "workflows/listados.h"
#include "workflows/panel.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoSinSeleccion = 1935;

}  // namespace

bool Listados::EliminarArchivoServidor(std::string_view tipo, std::string_view nombre) {
    auto cliente = flujos_.nuevoCliente();
    flujos_.configuracion().CargarConfiguracionEmpresa("");
    const auto resultado = cliente.EliminarArchivo(flujos_.enVigor(), tipo, nombre);
    if (!core::esError(resultado)) {
        return true;
    }
    entorno_.escritorio.Mensaje({resultado, core::Icono::exclamacion, {}});
    RefrescarVista();
    return false;
}

// Nothing on a failure, which is shown; a raised error goes up.
std::optional<std::int32_t> Listados::pedirTamano(std::string_view tipo, std::string_view nombre) {
    auto cliente = flujos_.nuevoCliente();
    flujos_.configuracion().CargarConfiguracionEmpresa("");
    const auto resultado = cliente.FileSize(flujos_.enVigor(), tipo, nombre);
    if (core::esError(resultado)) {
        entorno_.escritorio.Mensaje({resultado, core::Icono::exclamacion, {}});
        return std::nullopt;
    }
    return service::leerTamano(resultado);
}

double Listados::TamanoArchivo(std::string_view tipo, std::string_view nombre) {
    try {
        return pedirTamano(tipo, nombre).value_or(-1);
    } catch (const std::exception& error) {
        entorno_.escritorio.Mensaje({error.what(), core::Icono::exclamacion, {}});
        return -1;
    }
}

void Listados::TamanoSeleccion() {
    const auto tipo = VistaActual();
    if (tipo.empty()) {
        return;
    }
    double total = 0;
    const auto [desde, hasta] = flujos_.lista().seleccion();
    for (int fila = desde; fila <= hasta; ++fila) {
        const auto nombre = vista().fx1.celda(fila, columna_rejilla::nombre);
        if (core::Recortar(nombre).empty()) {
            entorno_.escritorio.Mensaje({texto(textoSinSeleccion), core::Icono::ninguno, {}});
            return;
        }
        const double bytes = TamanoArchivo(tipo, nombre);
        if (bytes < 0) {
            return;
        }
        total += bytes;
    }
    vista().Tamaño = flujos_.panel().enUnidad(total);
    vista().avisar(core::Parte::etiquetas);
}

bool Listados::faltanTamanos() const {
    return core::Recortar(vista().fx1.celda(1, columna_rejilla::ordenTamano)).empty();
}

void Listados::ActualizaTamanoFila() {
    if (vista().Option1 == core::Opcion::historico || vista().fx1.filas() < 2) {
        return;
    }
    flujos_.panel().Barra(-1);
    try {
        ponerTamanos();
    } catch (const std::exception& error) {
        entorno_.escritorio.Mensaje({error.what(), core::Icono::exclamacion, {}});
    }
    flujos_.panel().Barra(0);
    vista().avisar(core::Parte::rejilla);
    flujos_.lista().alConocerTamanos();
}

// A size that cannot be read costs its own row; a line that is down would fail for all alike.
std::optional<std::int32_t> Listados::pedirTamanoDeFila(std::string_view tipo, const std::string& nombre) {
    try {
        return pedirTamano(tipo, nombre);
    } catch (const std::logic_error& error) {
        entorno_.escritorio.Mensaje({error.what(), core::Icono::exclamacion, {}});
    } catch (const std::overflow_error& error) {
        entorno_.escritorio.Mensaje({error.what(), core::Icono::exclamacion, {}});
    }
    return std::nullopt;
}

void Listados::ponerTamanos() {
    auto& rejilla = vista().fx1;
    const auto tipo = VistaActual();
    const int filas = rejilla.filas() - 1;
    double total = 0;
    vista().lbtotalocupado.clear();
    for (int fila = 1; fila <= filas; ++fila) {
        const auto nombre = rejilla.celda(fila, columna_rejilla::nombre);
        if (core::Recortar(nombre).empty()) {
            continue;
        }
        if (const auto bytes = pedirTamanoDeFila(tipo, nombre)) {
            rejilla.ponerCelda(fila, columna_rejilla::tamano, flujos_.panel().enUnidad(*bytes));
            rejilla.ponerCelda(fila, columna_rejilla::ordenTamano, std::to_string(*bytes));
            total += *bytes;
        }
        flujos_.panel().Barra(fila, filas);
    }
    vista().lbtotalocupado = flujos_.panel().enUnidad(total);
    vista().avisar(core::Parte::etiquetas);
}

void Listados::Command1_Click() {
    flujos_.panel().entrada([&] { TamanoSeleccion(); });
}

}  // namespace tarvoline::workflows
