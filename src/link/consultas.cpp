#include "link/consultas.h"

#include <algorithm>

#include "core/texto.h"
#include "data/empresa_suelta.h"
#include "data/seleccion.h"

namespace tarvoline::link {

data::Condicion iguales(const char* columna, std::string_view valor, std::size_t ancho) {
    return {columna, data::Operador::igual, core::Mid(valor, 1, ancho)};
}

std::vector<data::Condicion> delAsiento(int tabla, const FechaAsto& asiento) {
    const bool deIva = tabla == data::tabla::iva01;
    const bool deCartera = tabla == data::tabla::efect;
    const char* const numero = deIva ? "ASIENTO (DOC) CONTABLE" : deCartera ? "ASIENTO CONTABLE" : "ASIENTO";
    return {iguales(deIva || deCartera ? "FECHA CONTABLE" : "FECHA", asiento.Fecha, ancho::fecha),
            iguales(numero, asiento.Asiento, ancho::asiento)};
}

std::vector<std::int32_t> filasCon(Sesion& sesion, int tabla,
                                   const std::vector<data::Condicion>& condiciones) {
    data::Tablas& tablas = sesion.contexto.tablas();
    const data::Filtro filtro(sesion.contexto.datos, tablas.definicion(tabla), condiciones);
    return data::seleccionar(tablas, tabla, filtro, data::OrdenFilas::natural);
}

void abrirCursor(Sesion& sesion, data::TablaCursor& cursor, int tabla) {
    const auto* const una = std::ranges::find(data::tablasDeEmpresa, tabla, &data::TablaEmpresa::tabla);
    abrirCursor(cursor, data::rutaDeTabla(sesion.contexto.datos, una->nombre));
}

void abrirCursor(data::TablaCursor& cursor, const std::string& ruta) {
    if (cursor.Abrir(ruta)) return;
    throw platform::ErrorArchivo(platform::error_archivo::ruta, ruta, "no se ha podido abrir la tabla");
}

void exigirClaves(const data::Tablas& tablas) {
    if (tablas.gEstado == motor::estado::bien) return;
    throw ErrorEnlace(error_enlace::errorIndexados, "Se ha producido un error de indexados No. " +
                                                        std::to_string(tablas.gEstado) +
                                                        " Se debe reindexar los datos de Veldorix");
}

}  // namespace tarvoline::link
