// The members of the class Enlace that stand in files of their own.
#pragma once

#include <pybind11/pybind11.h>

#include <memory>

#include "tarvoline/enlace.h"

namespace tarvoline::python {

using ClaseEnlace = pybind11::class_<link::Enlace, std::shared_ptr<link::Enlace>>;

void anadirDatos(ClaseEnlace& clase);

}  // namespace tarvoline::python
