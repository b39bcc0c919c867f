// The service's log of who moved what.
#pragma once

#include <string>
#include <string_view>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Historico : public Flujo {
  public:
    using Flujo::Flujo;

    // Does nothing while the views are being refreshed; a failure is shown. Returns "".
    std::string GrabarEntradaHistorico(std::string_view texto);
    void ListarHistorico(std::string_view filtro = {});
};

}  // namespace tarvoline::workflows
