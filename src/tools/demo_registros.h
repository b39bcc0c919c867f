// What stands beside the journal of the demo company: addresses, budgets, fixed assets.
#pragma once

#include <string>

#include "tarvoline/enlace.h"
#include "tools/demo_azar.h"

namespace tarvoline::tools {

struct PersonaDemo {
    std::string cuenta, nombre, nif;
    bool criterioCaja = false;
};

// Master data of a customer or supplier, and the global data of the person with them.
void crearDatos(link::Enlace& enlace, Azar& azar, const PersonaDemo& persona);
// Twelve months of sales and of the main costs.
void crearPresupuestos(link::Enlace& enlace, Azar& azar);
// The oven, the van and the tills, bought in the years before `anio`.
void crearInmovilizado(link::Enlace& enlace, int anio);

}  // namespace tarvoline::tools
