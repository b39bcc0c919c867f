// The folder where archives wait for their upload and downloads land.
#pragma once

#include <string>
#include <string_view>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Temporales : public Flujo {
  public:
    using Flujo::Flujo;

    // Deletes up to 1000 files, but for the archive of an interrupted upload and those that are open
    // somewhere.
    void VaciarTemporal();
    void Elimina_Temporal() { VaciarTemporal(); }
    // At the start: the zips that no upload needs, and what dead packings left. Nothing is touched while
    // another instance runs.
    void LimpiarZipsTemporales(bool otraInstancia);
    // Where a stored file of that name lands. Throws platform::ErrorArchivo for a name that would leave the
    // folder (the names come from the service), and for the archive that an interrupted upload still needs.
    std::string rutaDescarga(std::string_view nombre) const;

  private:
    bool esSubidaInterrumpida(std::string_view ruta) const;
    void borrarSiLibre(std::string_view ruta);
    void borrarCopiasViejas();
};

}  // namespace tarvoline::workflows
