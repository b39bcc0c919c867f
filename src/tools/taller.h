// The objects that the data layer works with, as a program of the command line needs them: the user's
// settings, the real files and clock.
#pragma once

#include <memory>

#include "core/ajustes.h"
#include "core/carpetas.h"
#include "data/capa_datos.h"
#include "platform/arbol_ajustes.h"
#include "platform/archivos.h"
#include "platform/carpetas_sistema.h"
#include "platform/reloj.h"

namespace tarvoline::tools {

class Taller {
  public:
    Taller()
        : archivos_(platform::crearSistemaArchivos()),
          arbol_(
              platform::crearArbolAjustes(*archivos_, platform::carpetaConfiguracion() + "/QZ/ajustes.ini")),
          ajustes_(*arbol_),
          carpetas_(*archivos_, ajustes_, platform::carpetaTemporal()),
          reloj_(platform::crearReloj()),
          capa_{*archivos_, ajustes_, carpetas_, *reloj_} {}

    data::CapaDatos& capa() { return capa_; }
    platform::SistemaArchivos& archivos() { return *archivos_; }

  private:
    std::unique_ptr<platform::SistemaArchivos> archivos_;
    std::unique_ptr<platform::ArbolAjustes> arbol_;
    core::Ajustes ajustes_;
    core::Carpetas carpetas_;
    std::unique_ptr<platform::Reloj> reloj_;
    data::CapaDatos capa_;
};

}  // namespace tarvoline::tools
