// The table operations of the accounting link: searching, changing and removing rows by text.
#pragma once

#include <string>

#include "server/enlace_forma.h"
#include "tarvoline/enlace.h"

namespace tarvoline::server {

// All throw ErrorForma for a table or field that may not be had this way, link::ErrorEnlace,
// data::ErrorFiltro.
std::string buscarFilas(const FormaEnlace& forma, link::Enlace& enlace);
// An account, master data or a budget, made or changed by their fields; the account that it was.
std::string cambiarFila(const FormaEnlace& forma, link::Enlace& enlace);
// Marks of the portfolio; how many lines.
std::string cambiarFilas(const FormaEnlace& forma, link::Enlace& enlace);
// Lines of the portfolio; how many.
std::string borrarFilas(const FormaEnlace& forma, link::Enlace& enlace);

}  // namespace tarvoline::server
