// What stands behind an Enlace: its session, and who fulfils its operations.
#pragma once

#include <utility>

#include "link/operaciones_locales.h"
#include "link/remoto/operaciones_remotas.h"
#include "link/sesion.h"

namespace tarvoline::link {

struct Enlace::Interior {
    Interior(Contexto& contexto, OpcionesEnlace opciones)
        : sesion{contexto.interior(), std::move(opciones)}, locales(sesion), remotas(sesion) {}

    Operaciones& operaciones() {
        if (sesion.ModoRemoto) return remotas;
        return locales;
    }
    // For operations on company data: a company is open, and is the one in force.
    Operaciones& conEmpresa() {
        sesion.entrar();
        return operaciones();
    }
    void leerVecino(Vecino cual) { conEmpresa().leerVecino(cual); }

    Sesion sesion;
    OperacionesLocales locales;
    remoto::OperacionesRemotas remotas;
};

}  // namespace tarvoline::link
