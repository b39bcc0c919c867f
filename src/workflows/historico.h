// The service's log of who moved what.
#pragma once

#include <string>
#include <string_view>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Historico : public Flujo {
  public:
    using Flujo::Flujo;

    // A line under the user in force; the service adds date and time. Does nothing while the views are being
    // refreshed; a failure of the service is shown. Returns "". Throws soap::ErrorServicio.
    std::string GrabarEntradaHistorico(std::string_view texto);
    // The line of a work that is done: when it cannot be written that is shown by itself, and the work
    // stands.
    void anotarHecho(std::string_view texto);
    // The log into the grid, in the order received: record i on row i + 1, a blank record as an empty row.
    // A failure of the service leaves the grid as it was, without a word. Throws soap::ErrorServicio.
    void ListarHistorico(std::string_view filtro = {});
};

}  // namespace tarvoline::workflows
