// Plausible records of the demo company, in the fixed-length form of its tables.
#pragma once

#include <string>

#include "tools/demo_azar.h"

namespace tarvoline::tools {

// Bytes of a data file: `cuantos` records one behind the other. `anio` is the accounting year.
std::string tablaApuntes(Azar& azar, int anio, int cuantos);   // EXTRA, 465 bytes a record
std::string tablaTerceros(Azar& azar, int cuantos);            // DATOS, 801 bytes a record
std::string tablaFacturas(Azar& azar, int anio, int cuantos);  // IVA01, 953 bytes a record

}  // namespace tarvoline::tools
