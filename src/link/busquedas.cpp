#include "link/busquedas.h"

#include "core/texto.h"
#include "data/codec.h"
#include "link/consultas.h"
#include "link/linea_extracto.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace {

namespace extra = posicion::extra;

std::int32_t contar(Sesion& sesion, int tabla, const data::Condicion& condicion) {
    data::TablaCursor filas(sesion.contexto.datos, sesion.contexto.tablas());
    abrirCursor(sesion, filas, tabla);
    filas.Filtrar({condicion});
    return filas.ContarRegistros();
}

}  // namespace

bool Busquedas::BuscarReferencia(std::string_view referencia) {
    sesion_.resultados.extracto.vaciar();
    const TablasAbiertas abiertas(sesion_);
    LectorRegistros lector(sesion_.contexto.tablas(), data::tabla::extra);
    const auto condicion = iguales(columna::referencia, referencia, ancho::referencia);
    for (const std::int32_t registro : filasCon(sesion_, data::tabla::extra, {condicion}))
        anadir(lector, registro);
    return !sesion_.resultados.extracto.vacia();
}

void Busquedas::BuscarDescripcion(std::string_view descripcion, bool ignorarMayusculas) {
    buscarBytes(extra::descripcion, core::aAnsi(descripcion).bytes(), ignorarMayusculas, false);
}

void Busquedas::BuscarImporte(double importe) {
    buscarBytes(extra::importe, data::DobleATexto(importe) + data::DobleATexto(-importe), false, true);
}

void Busquedas::buscarBytes(int posicion, std::string_view bytes, bool ignorarMayusculas, bool dosTextos) {
    sesion_.resultados.extracto.vaciar();
    const TablasAbiertas abiertas(sesion_);
    data::Tablas& tablas = sesion_.contexto.tablas();
    const int campo = tablas.gCampoDePosicion(data::tabla::extra, posicion);
    LectorRegistros lector(tablas, data::tabla::extra);
    data::Tablas::Busqueda busqueda;
    while (const std::int32_t registro =
               tablas.BuscarEnTabla(busqueda, data::tabla::extra, campo, bytes, ignorarMayusculas, dosTextos))
        anadir(lector, registro);
}

// A removed record may still hold what was looked for: the mark at its head, where a date begins, tells it.
void Busquedas::anadir(LectorRegistros& lector, std::int32_t registro) {
    const auto fila = lector.leer(registro);
    constexpr auto largo = ancho::fecha;
    if (!fila || fila->bytes(extra::fecha) == data::marcaAnulado.substr(0, largo)) return;
    sesion_.resultados.extracto.anadir(lineaExtracto(sesion_, *fila, registro, extra::cuenta));
}

std::int32_t Busquedas::ExisteReferencia(std::string_view referencia) {
    return contar(sesion_, data::tabla::extra, iguales(columna::referencia, referencia, ancho::referencia));
}

std::int32_t Busquedas::ExisteIva(std::string_view factura) {
    return contar(sesion_, data::tabla::iva01, iguales(columna::factura, factura, ancho::factura));
}

}  // namespace tarvoline::link
