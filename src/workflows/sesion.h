// Login and change of user.
#pragma once

#include <optional>
#include <string>

#include "link/enlace.h"
#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Sesion : public Flujo {
  public:
    using Flujo::Flujo;

    void CambiarUsuario();
    // Asks for a company and opens it; false when the person cancelled the choice.
    bool EmpresaParaUsuario(link::Enlace& enlace);
    // Caption of the window for the user in force.
    std::string titulo();
    // Puts the session's user back in force.
    void reponerUsuario();

  private:
    void guardarEnEmpresa();
};

}  // namespace tarvoline::workflows
