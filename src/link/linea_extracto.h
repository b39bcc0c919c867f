// A line of the journal, or an analytic one, as an item of a statement.
#pragma once

#include <cstdint>

#include "link/lector_registros.h"
#include "link/sesion.h"

namespace tarvoline::link {

// `posicionCuenta`: of the account that the statement is about. The balance is left 0.
ExtractoClass lineaExtracto(const Sesion& sesion, const Fila& fila, std::int32_t registro,
                            int posicionCuenta);

}  // namespace tarvoline::link
