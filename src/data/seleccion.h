// The rows of an open table that meet a filter, as record numbers. Removed records, and those that somebody
// is about to write, are never among them.
#pragma once

#include <cstdint>
#include <vector>

#include "data/filtro.h"
#include "data/tablas.h"

namespace tarvoline::data {

enum class OrdenFilas {
    natural,    // of entry: by record number
    porCodigo,  // by the text of key 1, then by record number
};

// By the filter's key when the table is open with its keys and the filter has one, else by a scan.
// gCampos stays; a search by key moves the table's position and sets gRegistro and gEstado.
std::vector<std::int32_t> seleccionar(Tablas& tablas, int tabla, const Filtro& filtro, OrdenFilas orden);

// The two ways of it, in the order in which they come. By key: REQUIRES filtro.llave().
std::vector<std::int32_t> filasPorClave(Tablas& tablas, int tabla, const Filtro& filtro);
std::vector<std::int32_t> filasPorRecorrido(Tablas& tablas, int tabla, const Filtro& filtro);

}  // namespace tarvoline::data
