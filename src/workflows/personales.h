// Personal files up.
#pragma once

#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Personales : public Flujo {
  public:
    using Flujo::Flujo;

    void Subir_Click();
    // The same without the dialog: `archivo` goes up as a personal file. Returns whether it is stored.
    bool subir(std::string_view archivo);

  private:
    void refrescarLista();
};

}  // namespace tarvoline::workflows
