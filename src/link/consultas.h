// Rows of the company's tables by what their columns hold.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "data/filtro.h"
#include "data/tabla_cursor.h"
#include "link/sesion.h"

namespace tarvoline::link {

// Titles of columns (docs/formats.md).
namespace columna {
inline constexpr const char* cuenta = "CUENTA";               // PLANC, DATOS, EXTRA
inline constexpr const char* referencia = "REFERENCIA";       // EXTRA, IVA01
inline constexpr const char* tercero = "CLIENTE/PROVEEDOR";   // IVA01
inline constexpr const char* fechaFactura = "FECHA FACTURA";  // IVA01
inline constexpr const char* analitica = "NUMERO ANALITICA";  // EXTRA, Anali
inline constexpr const char* factura = "FACTURA No.";         // IVA01
}  // namespace columna

// Characters of the fields that rows are asked for by.
namespace ancho {
inline constexpr std::size_t fecha = 6, asiento = 6, cuenta = 10, referencia = 20, factura = 20,
                             analitica = 6, cartera = 10;
}  // namespace ancho

// The condition that a text column holds `valor`, cut to the field's `ancho` characters as it was stored.
data::Condicion iguales(const char* columna, std::string_view valor, std::size_t ancho);
// Those of the rows of an entry, date first, in EXTRA, Anali, IVA01 or EFECT. An empty part means rows that
// have none. `asiento.Fecha` is a stored date.
std::vector<data::Condicion> delAsiento(int tabla, const FechaAsto& asiento);

// Record numbers, in the order of entry, of a table of the company that is open.
std::vector<std::int32_t> filasCon(Sesion& sesion, int tabla,
                                   const std::vector<data::Condicion>& condiciones);

// Opens the cursor on a table of the session's company. Throws platform::ErrorArchivo when it cannot be
// opened; why has been shown.
void abrirCursor(Sesion& sesion, data::TablaCursor& cursor, int tabla);
// The same of a table by its path.
void abrirCursor(data::TablaCursor& cursor, const std::string& ruta);

// Throws errorIndexados when the last change of a row failed at its keys.
void exigirClaves(const data::Tablas& tablas);

}  // namespace tarvoline::link
