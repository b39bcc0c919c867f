// Stored files down, and looked at.
#pragma once

#include <string>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Descargas : public Flujo {
  public:
    using Flujo::Flujo;

    void Descargar_Click();
    void fx1_DblClick();
    void List1_Click(int indice);

  private:
    void abrir(const std::string& nombre);
};

}  // namespace tarvoline::workflows
