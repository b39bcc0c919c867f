// Where the arguments of new master data go in a row of DATOS.
#pragma once

#include <span>
#include <string>

#include "tarvoline/clases.h"
#include "tarvoline/registros.h"

namespace tarvoline::link {

struct CampoDatos {
    int posicion;
    std::string DatosNuevos::*valor;
    // What holds the same of a person; null: nothing does.
    std::string DatosGlobalClass::*global = nullptr;
    double DatosGlobalClass::*importe = nullptr;  // of an amount

    bool esImporte() const { return importe != nullptr; }
};
// All but the account.
std::span<const CampoDatos> camposDeDatos();

}  // namespace tarvoline::link
