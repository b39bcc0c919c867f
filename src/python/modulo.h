// The parts of the Python module.
#pragma once

#include <pybind11/pybind11.h>

namespace tarvoline::python {

void anadirErrores(pybind11::module_& modulo);    // ErrorEnlace
void anadirClases(pybind11::module_& modulo);     // the data classes of the entry and the results
void anadirRegistros(pybind11::module_& modulo);  // InmoClass, DatosGlobalClass
void anadirSesion(pybind11::module_& modulo);     // Contexto, Enlace

}  // namespace tarvoline::python
