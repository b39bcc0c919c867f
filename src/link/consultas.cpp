#include "link/consultas.h"

#include <algorithm>

#include "core/texto.h"
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
    const std::string ruta =
        sesion.empresa.gDirectorioEmpresa + std::string(una->nombre) + sesion.empresa.gEmpresaActual + ".QZD";
    if (cursor.Abrir(ruta)) return;
    throw platform::ErrorArchivo(platform::error_archivo::ruta, ruta, "the table could not be opened");
}

}  // namespace tarvoline::link
