// Rows of a search as items of the session's collections, by the names of their columns.
#pragma once

#include "link/remoto/tabla_respuesta.h"
#include "link/sesion.h"

namespace tarvoline::link::remoto {

PlanClass planDe(const TablaRespuesta& tabla, std::size_t fila);
DatosClass datosDe(const TablaRespuesta& tabla, std::size_t fila);
CarteraClass carteraDe(const Sesion& sesion, const TablaRespuesta& tabla, std::size_t fila);
// The balance is left 0.
ExtractoClass lineaDe(const Sesion& sesion, const TablaRespuesta& tabla, std::size_t fila);

}  // namespace tarvoline::link::remoto
