// The companies that the accounting programs have marked as due.
#pragma once

#include <string>
#include <string_view>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

// Drops the first and the last character; "" stays "".
std::string QuitarComillas(std::string_view texto);

class Pendientes : public Flujo {
  public:
    using Flujo::Flujo;

    // Works through slots 1..100 until a scan has finished with no success. True when no slot failed. Each
    // outcome is noted in Estado::resumen.
    bool SubirPendientesBatch(bool mostrar);
    void SubirPendientes_Click();
};

}  // namespace tarvoline::workflows
