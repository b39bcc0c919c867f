// One company, chosen by the person, from the file dialog to the history line.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

class SubidaEmpresa : public Flujo {
  public:
    using Flujo::Flujo;

    // Text for the person; "" for nothing to say.
    std::string SubirUnaEmpresa();
    void SubirEmpresa_Click();

  private:
    void contar(const std::string& resultado);
    std::string subirVeldorix();
    std::string subirVXCRM();
    std::optional<std::string> elegirEmpresa();
    bool aceptaUsuario();
    std::string subirConPersonales(const std::string& zip);
    std::vector<std::string> empresasVXCRM();
};

}  // namespace tarvoline::workflows
