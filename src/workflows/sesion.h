// Login and change of user.
#pragma once

#include <optional>
#include <string>

#include "tarvoline/enlace.h"
#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Sesion : public Flujo {
  public:
    using Flujo::Flujo;

    // Asks for user, password and account code, and makes that user the session's. With the box ticked the
    // login is stored in a company too.
    void CambiarUsuario();
    // Asks for a company and opens it; false when the person cancelled the choice. Throws link::ErrorEnlace
    // when it stays closed, core::FinDePrograma when its password prompt was cancelled.
    bool EmpresaParaUsuario(link::Enlace& enlace);
    // Caption of the window for the user in force.
    std::string titulo();
    // Puts the session's user back in force: nobody when nobody has logged in.
    void reponerUsuario();

  private:
    struct Respuesta {
        std::string usuario, password, cuenta;
        bool guardarEnEmpresa = false;
    };
    std::optional<Respuesta> preguntar();
    void iniciar(const Respuesta& respuesta);
    void guardarEnEmpresa();

    // Account code that the service named for the last login, for a session that gave none.
    std::string usuarioHallado_, cuentaHallada_;
};

}  // namespace tarvoline::workflows
