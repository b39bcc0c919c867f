#include "workflows/lista.h"

#include <algorithm>
#include <array>

#include "core/texto.h"
#include "workflows/historico.h"
#include "workflows/listados.h"
#include "workflows/panel.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoDescripcion = 950;
constexpr int textoTamano = 964;
constexpr int textoOperacion = 1671;
constexpr int textoCarpeta = 2220;
constexpr int textoFecha = 2225;
constexpr int textoConfirmarBorrado = 2239;

// " yyyy-MM-dd  HH mm" less its first blank, which stays with the description, and ".ZIP".
constexpr std::size_t longitudSello = 21;
constexpr std::string_view extension = ".ZIP";

struct Fecha {
    std::string anio, mes, dia;
};

bool sonCifras(std::string_view texto) {
    return std::all_of(texto.begin(), texto.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// dd/mm/yyyy or yyyy-mm-dd, days and months with one digit or two.
bool leerFecha(std::string_view texto, Fecha& fecha) {
    const bool conBarras = texto.find('/') != std::string_view::npos;
    auto partes = core::Partir(texto, conBarras ? "/" : "-");
    if (partes.size() != 3) {
        return false;
    }
    if (conBarras) {
        std::swap(partes[0], partes[2]);
    }
    const auto corta = [](const std::string& parte) { return parte.empty() || parte.size() > 2; };
    if (partes[0].size() != 4 || corta(partes[1]) || corta(partes[2]) ||
        !std::all_of(partes.begin(), partes.end(), sonCifras)) {
        return false;
    }
    fecha = {partes[0], core::conCeros(core::ValEntero(partes[1]), 2),
             core::conCeros(core::ValEntero(partes[2]), 2)};
    return core::ValEntero(fecha.mes) >= 1 && core::ValEntero(fecha.mes) <= 12 &&
           core::ValEntero(fecha.dia) >= 1 && core::ValEntero(fecha.dia) <= 31;
}

// What stands before and behind the first blank.
std::pair<std::string, std::string> partirEnBlanco(std::string_view texto) {
    const auto blanco = texto.find(' ');
    if (blanco == std::string_view::npos) {
        return {std::string(texto), {}};
    }
    return {std::string(texto.substr(0, blanco)), core::Recortar(texto.substr(blanco + 1))};
}

bool esOrdenPorTamano(int orden) {
    return orden > 100 && orden / 10 % 10 == 2;
}

}  // namespace

void Lista::PrepararGrid(bool historia) {
    auto& rejilla = vista().fx1;
    rejilla.vaciar();
    rejilla.ponerFilas(historia ? 2 : static_cast<int>(vista().List1.size()) + 1);
    rejilla.anchos = {};
    rejilla.anchos[columna_rejilla::descripcion] = historia ? -1 : 500;
    rejilla.anchos[columna_rejilla::fecha] = historia ? 250 : 200;
    rejilla.anchos[columna_rejilla::tamano] = historia ? 100 : 200;
    rejilla.alineacion = {};
    rejilla.alineacion[columna_rejilla::numero] = core::Rejilla::Alineacion::centro;
    rejilla.alineacion[columna_rejilla::fecha] = core::Rejilla::Alineacion::centro;
    rejilla.ponerCelda(0, columna_rejilla::numero, "N");
    rejilla.ponerCelda(0, columna_rejilla::descripcion, texto(historia ? textoOperacion : textoDescripcion));
    rejilla.ponerCelda(0, columna_rejilla::fecha, texto(textoFecha));
    rejilla.ponerCelda(0, columna_rejilla::tamano, texto(historia ? textoCarpeta : textoTamano));
    vista().avisar(core::Parte::rejilla);
}

std::string Lista::claveFecha(std::string_view fechaHora) {
    const auto [dia, hora] = partirEnBlanco(fechaHora);
    Fecha fecha;
    if (!leerFecha(dia, fecha)) {
        return std::string(fechaHora);
    }
    return fecha.anio + fecha.mes + fecha.dia + core::Sustituir(hora, ":", "");
}

NombreArchivado Lista::separarNombre(std::string_view nombre) {
    const auto recortado = core::Recortar(nombre);
    const auto longitud = core::longitudTexto(recortado);
    if (longitud < longitudSello) {
        throw core::ErrorIndice("Nombre de copia demasiado corto: " + recortado);
    }
    const auto corte = longitud - longitudSello;
    auto sello = core::Mid(recortado, std::max<std::size_t>(corte, 1));
    if (sello.size() >= extension.size() &&
        core::igualSinCaja(std::string_view(sello).substr(sello.size() - extension.size()), extension)) {
        sello.resize(sello.size() - extension.size());
    }
    const auto [dia, resto] = partirEnBlanco(core::Recortar(sello));
    const auto hora = core::Sustituir(resto, " ", ":");
    NombreArchivado partes;
    partes.descripcion = core::Mid(recortado, 1, corte);
    Fecha fecha;
    const auto mostrada = leerFecha(dia, fecha) ? fecha.dia + "/" + fecha.mes + "/" + fecha.anio : dia;
    partes.fechaHora = core::Recortar(mostrada + " " + hora);
    partes.orden = claveFecha(partes.fechaHora);
    return partes;
}

void Lista::LlenarGrid() {
    PrepararGrid();
    auto& rejilla = vista().fx1;
    const bool archivos = vista().Option1 == core::Opcion::veldorix;
    int fila = 0;
    for (const auto& nombre : vista().List1) {
        ++fila;
        rejilla.ponerCelda(fila, columna_rejilla::numero, core::conCeros(fila, 3));
        rejilla.ponerCelda(fila, columna_rejilla::nombre, nombre);
        if (!archivos) {
            rejilla.ponerCelda(fila, columna_rejilla::descripcion, nombre);
            continue;
        }
        auto partes = separarNombre(nombre);
        rejilla.ponerCelda(fila, columna_rejilla::descripcion, std::move(partes.descripcion));
        rejilla.ponerCelda(fila, columna_rejilla::fecha, std::move(partes.fechaHora));
        rejilla.ponerCelda(fila, columna_rejilla::ordenFecha, std::move(partes.orden));
    }
    vista().listaLeida = true;
    vista().lbtotalocupado = vista().List1.empty() ? flujos_.panel().enUnidad(0) : std::string();
    vista().avisar(core::Parte::etiquetas);
    vista().avisar(core::Parte::rejilla);
    if (ordenPendiente_ != 0 && !esOrdenPorTamano(ordenPendiente_)) {
        Ordenar_Click(ordenPendiente_);
    }
    if (!estado().gInicio) {
        flujos_.listados().ActualizaTamanoFila();
    }
}

void Lista::Ordenar_Click(int indice) {
    ordenPendiente_ = 0;  // what the person wants now goes before what the last run had
    constexpr int ascendente = 1;
    constexpr int descendente = 2;
    if (indice > 100) {
        // The toggle below brings the saved direction back.
        estado().SentidoOrden = indice % 10 == ascendente ? descendente : ascendente;
        indice = indice / 10 % 10;
    }
    constexpr std::array columnas = {columna_rejilla::nombre, columna_rejilla::ordenFecha,
                                     columna_rejilla::ordenTamano};
    if (indice < 0 || indice >= static_cast<int>(columnas.size())) {
        return;
    }
    auto& sentido = estado().SentidoOrden;
    sentido = sentido == ascendente ? descendente : ascendente;
    estado().gOrdenGrid = 100 + indice * 10 + sentido;
    entorno_.almacen.Grabar("OrdenGrid", std::to_string(estado().gOrdenGrid), "Backup");
    const int columna = columnas[static_cast<std::size_t>(indice)];
    const bool comoNumero =
        columna == columna_rejilla::ordenTamano && vista().Option1 != core::Opcion::historico;
    vista().fx1.ordenar(columna, sentido == ascendente, comoNumero);
    vista().avisar(core::Parte::rejilla);
}

int Lista::ordenGuardado() const {
    return core::ValEntero(entorno_.almacen.Leer("OrdenGrid", "Backup"));
}

void Lista::aplicarOrdenGuardado() {
    if (!core::Recortar(entorno_.almacen.Leer("OrdenGrid", "Backup")).empty()) {
        aplicarOrden(ordenGuardado());
    }
}

void Lista::aplicarOrden(int orden) {
    const auto& rejilla = vista().fx1;
    const bool conTamanos = vista().Option1 != core::Opcion::historico && rejilla.filas() > 1;
    const bool porMedir =
        rejilla.celda(1, columna_rejilla::ordenTamano).empty() || flujos_.listados().quedanTamanos();
    if (esOrdenPorTamano(orden) && conTamanos && porMedir) {
        ordenPendiente_ = orden;
        return;
    }
    Ordenar_Click(orden);
}

void Lista::alConocerTamanos() {
    if (const int orden = std::exchange(ordenPendiente_, 0); orden != 0) {
        Ordenar_Click(orden);
    }
}

std::pair<int, int> Lista::seleccion() const {
    return std::minmax(vista().fx1.Row, vista().fx1.RowSel);
}

std::vector<std::string> Lista::borrarSeleccion() {
    std::vector<std::string> nombres;
    const auto [desde, hasta] = seleccion();
    for (int fila = std::max(desde, 1); fila <= hasta; ++fila) {
        if (auto nombre = core::Recortar(vista().fx1.celda(fila, columna_rejilla::nombre)); !nombre.empty()) {
            nombres.push_back(std::move(nombre));
        }
    }
    std::vector<std::string> borrados;
    for (auto& nombre : nombres) {
        try {
            if (!flujos_.listados().EliminarArchivoServidor(flujos_.listados().VistaActual(), nombre)) {
                break;
            }
        } catch (const std::exception& error) {
            // Those that are gone still get their line.
            entorno_.escritorio.Mensaje(
                {error.what(), core::Icono::exclamacion, std::string(tituloPrograma)});
            break;
        }
        borrados.push_back(std::move(nombre));
    }
    return borrados;
}

// The counter runs from Row up to RowSel: a selection made upwards stays on show until the next listing.
void Lista::quitarFilasBorradas(bool unaSolaFila) {
    auto& rejilla = vista().fx1;
    const int fila = rejilla.Row;
    const int hasta = rejilla.RowSel;
    for (int i = fila; i <= hasta; ++i) {
        rejilla.quitarFila(fila);
    }
    if (unaSolaFila) {
        rejilla.ponerFilas(1);
    }
    rejilla.Row = std::min(rejilla.Row, rejilla.filas() - 1);
    rejilla.RowSel = rejilla.Row;
    vista().avisar(core::Parte::rejilla);
}

void Lista::teclaEnRejilla(int tecla) {
    std::string borrados;
    if (tecla == teclaSuprimir && vista().Option1 != core::Opcion::historico) {
        entorno_.escritorio.Puntero(true);
        const bool unaSolaFila = vista().fx1.filas() == 2;
        const auto [desde, hasta] = seleccion();
        const auto nombres = borrarSeleccion();
        for (const auto& nombre : nombres) {
            borrados += (borrados.empty() ? "" : ", ") + nombre;
        }
        // A failure has read the list again: the rows on show are those that are left.
        if (desde >= 1 && static_cast<int>(nombres.size()) == hasta - desde + 1) {
            quitarFilasBorradas(unaSolaFila);
        }
        entorno_.escritorio.Puntero(false);
    }
    flujos_.historico().GrabarEntradaHistorico(estado().gUsuario +
                                               estado().gTextosHistorico[core::haBorradoArchivo] + borrados);
}

void Lista::fx1_KeyDown(int tecla) {
    flujos_.panel().entrada([&] { teclaEnRejilla(tecla); });
}

void Lista::Eliminar_Click() {
    flujos_.panel().entrada([&] {
        const int recordado = vista().elegidoList1;
        if (!entorno_.escritorio.Preguntar({texto(textoConfirmarBorrado), core::Icono::informacion, {}}) ||
            vista().Option1 == core::Opcion::historico) {
            return;
        }
        teclaEnRejilla(teclaSuprimir);
        flujos_.listados().ListarArchivos(flujos_.listados().VistaActual());
        const int cuantos = static_cast<int>(vista().List1.size());
        vista().elegidoList1 = std::min(recordado < cuantos ? recordado : 0, cuantos - 1);
        vista().avisar(core::Parte::lista);
    });
}

}  // namespace tarvoline::workflows
