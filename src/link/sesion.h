// The state of one session on one company, shared by the workers behind `Enlace`.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/escritorio.h"
#include "data/capa_datos.h"
#include "link/contexto.h"

namespace tarvoline::link {

struct OpcionesEnlace {
    // Asks for the password of a company; nothing when cancelled. Absent: the answer is empty, and
    // `AbrirEmpresa` fails with error_enlace::claveNoValida.
    std::function<std::optional<std::string>(const core::Peticion&)> pedirClave{};
};

struct Sesion {
    Contexto& contexto;
    OpcionesEnlace opciones;

    std::vector<std::string> Empresas{};  // full paths
    bool ModoRemoto = false;
    std::string Usuario = "99";      // two-digit user code
    data::EmpresaEnVigor empresa{};  // the session's own; empresa.gEmpresaActual is `NumeroEmpresa`

    // Throws ErrorEnlace empresaNoAbierta when no company is open; else makes this session's company the one
    // in force. Every operation on company data begins with it.
    void entrar();
    // Makes this session's company the one in force.
    void ponerEnVigor() { contexto.datos().enVigor = empresa; }
};

}  // namespace tarvoline::link
