// The folder where archives wait for their upload and downloads land.
#pragma once

#include <string>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Temporales : public Flujo {
  public:
    using Flujo::Flujo;

    // Deletes up to 1000 files, but for the archive of an interrupted upload and those that another process
    // holds.
    void VaciarTemporal();
    void Elimina_Temporal() { VaciarTemporal(); }
    // At the start: the zips that no upload needs. Nothing is touched while another instance runs.
    void LimpiarZipsTemporales(bool otraInstancia);
};

}  // namespace tarvoline::workflows
