// One form of the accounting link under way.
#pragma once

#include "server/enlace_operaciones.h"

namespace tarvoline::server {

struct OperacionesEnlace::Peticion {
    const FormaEnlace& forma;
    SesionEnlace& sesion;
    const std::string carpeta;
    const std::string& direccion;

    // The books of the company that the form names. Throws link::ErrorEnlace.
    link::Enlace& libros() { return sesion.empresa(carpeta, forma.empresa); }
};

}  // namespace tarvoline::server
