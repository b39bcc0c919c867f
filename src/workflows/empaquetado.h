// One company into one dated zip archive.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Empaquetado : public Flujo {
  public:
    using Flujo::Flujo;

    // The archive's full path, or the problem text. `nombreDestino` not empty fixes the archive's name.
    std::string ZipEmpresa(std::string_view archivoEmpresa, std::string_view carpetaDestino, bool conImagenes,
                           bool conFecha = true, int nivel = 9, std::string_view nombreDestino = {});
    // Copies under locks; false when it gave up. Only a held file is told in a box.
    bool CopiarArchivo(std::string_view origen, std::string_view destino);

  private:
    std::set<std::string> nombresUsados_;  // stored names of this run
};

}  // namespace tarvoline::workflows
