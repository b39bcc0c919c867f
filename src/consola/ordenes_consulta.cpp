// Commands that only look: what is stored, who moved what, how much room there is.
#include <iomanip>
#include <locale>
#include <sstream>

#include "consola/ordenes.h"
#include "core/idioma.h"
#include "core/texto.h"
#include "workflows/espacio.h"
#include "workflows/historico.h"
#include "workflows/lista.h"
#include "workflows/listados.h"

namespace tarvoline::consola {

namespace {

std::string cifra(double valor) {
    std::ostringstream texto;
    texto.imbue(std::locale::classic());
    texto << std::fixed << std::setprecision(2) << valor;
    return texto.str();
}

}  // namespace

// When an archive of a company was made; "" for a name without a stamp.
std::string Ordenes::fechaDe(const std::string& nombre) const {
    if (montaje_.vista().Option1 != core::Opcion::veldorix) {
        return {};
    }
    try {
        return workflows::Lista::separarNombre(nombre).fechaHora;
    } catch (const core::ErrorIndice&) {
        return {};
    }
}

void Ordenes::listar(Informe& informe) {
    if (!mostrarLista(informe)) {
        return;
    }
    const auto tipo = flujos_.listados().VistaActual();
    Tabla tabla{
        "archivos", {{"nombre", "Nombre", {}}, {"fecha", "Fecha", {}}, {"bytes", "Bytes", {}, true}}, {}};
    double total = 0;
    for (const auto& nombre : montaje_.vista().List1) {
        const auto antes = escritorio_.fallos().size();
        const double bytes = flujos_.listados().TamanoArchivo(tipo, nombre);
        if (bytes < 0) {
            fallarUno(informe, antes, nombre);
            continue;
        }
        total += bytes;
        tabla.filas.push_back({nombre, fechaDe(nombre), std::to_string(static_cast<long long>(bytes))});
    }
    informe.tablas.push_back(std::move(tabla));
    informe.dato("total", "Total:", std::to_string(static_cast<long long>(total)), true);
}

void Ordenes::historico(Informe& informe) {
    montaje_.vista().Option1 = core::Opcion::historico;
    flujos_.historico().ListarHistorico();
    Tabla tabla{
        "entradas", {{"fecha", "Fecha", {}}, {"texto", "Operación", {}}, {"carpeta", "Carpeta", {}}}, {}};
    const auto& rejilla = montaje_.vista().fx1;
    for (int fila = 1; fila < rejilla.filas(); ++fila) {
        if (!rejilla.celda(fila, 3).empty()) {
            tabla.filas.push_back({rejilla.celda(fila, 4), rejilla.celda(fila, 3), rejilla.celda(fila, 5)});
        }
    }
    informe.tablas.push_back(std::move(tabla));
}

void Ordenes::espacio(Informe& informe) {
    flujos_.espacio().Controlar_capacidad(true);
    const auto& estado = montaje_.estado();
    informe.dato("usadoMB", "Usado (MB):", cifra(estado.gEspacioUsado), true);
    informe.dato("capacidadMB", "Capacidad (MB):", cifra(estado.gCapacidad), true);
    informe.dato("excedida", "Excedida:", estado.gCapacidadExcedida ? "1" : "0", true);
    Tabla tabla{"usuarios",
                {{"usuario", "Usuario", {}}, {"nombre", "Nombre", {}}, {"espacio", "Espacio (MB)", {}}},
                {}};
    for (const auto& linea : core::Partir(estado.gInforme, "\r\n")) {
        const auto celdas = core::Partir(linea, "\t");
        if (celdas.size() == tabla.columnas.size()) {
            tabla.filas.push_back(celdas);
        }
    }
    informe.tablas.push_back(std::move(tabla));
}

}  // namespace tarvoline::consola
