// Everything a routine of the upper floors needs from the core, in one handful of references. The entry
// builds the objects once; a test builds a fresh set.
#pragma once

#include "core/ajustes.h"
#include "core/almacen_comun.h"
#include "core/carpetas.h"
#include "core/escritorio.h"
#include "core/estado.h"
#include "core/registro.h"
#include "core/vista.h"
#include "platform/archivos.h"
#include "platform/reloj.h"

namespace tarvoline::core {

struct Entorno {
    Estado& estado;
    Vista& vista;
    Escritorio& escritorio;
    Ajustes& ajustes;
    AlmacenComun& almacen;
    Carpetas& carpetas;
    platform::SistemaArchivos& archivos;
    platform::Reloj& reloj;
    Registro& registro;

    const std::string& texto(int numero) const { return estado.gTextos(numero); }
};

// "Errors are ignored at this statement": runs `paso`, writes an error to the log and goes on. Returns
// whether it ran through. FinDePrograma passes.
template <typename Paso>
bool ignorandoErrores(Entorno& entorno, std::string_view donde, Paso&& paso) {
    try {
        paso();
        return true;
    } catch (const std::exception& error) {
        entorno.registro.aviso(std::string(donde) + ": " + error.what());
        return false;
    }
}

}  // namespace tarvoline::core
