// A row of the book of invoices as the line that would have it stored.
#pragma once

#include "data/tabla_cursor.h"
#include "link/sesion.h"

namespace tarvoline::link {

IVAClass ivaDe(const Sesion& sesion, data::TablaCursor& fila);

}  // namespace tarvoline::link
