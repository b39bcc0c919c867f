// What all sessions of one process share: the data layer with the company in force, and the settings, folders
// and files that it works with. The entry makes one; a test makes a fresh one.
#pragma once

#include "core/ajustes.h"
#include "core/carpetas.h"
#include "data/capa_datos.h"
#include "platform/archivos.h"
#include "platform/reloj.h"

namespace tarvoline::link {

class Contexto {
  public:
    // All are borrowed and must outlive this object.
    Contexto(platform::SistemaArchivos& archivos, core::Ajustes& ajustes, core::Carpetas& carpetas,
             platform::Reloj& reloj)
        : datos_{archivos, ajustes, carpetas, reloj} {
        datos_.gDecimalesMoneda = platform::digitosMonedaLocal().value_or(datos_.gDecimalesMoneda);
    }
    Contexto(const Contexto&) = delete;
    Contexto& operator=(const Contexto&) = delete;

    data::CapaDatos& datos() { return datos_; }
    platform::SistemaArchivos& archivos() { return datos_.archivos; }
    core::Ajustes& ajustes() { return datos_.ajustes; }
    core::Carpetas& carpetas() { return datos_.carpetas; }

  private:
    data::CapaDatos datos_;
};

}  // namespace tarvoline::link
