// Turns a company into the credentials in force: user, password, folder, account code, extra folders.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "link/enlace.h"
#include "workflows/flujos.h"

namespace tarvoline::workflows {

class ConfiguracionEmpresa : public Flujo {
  public:
    using Flujo::Flujo;

    // With an empty path: the session's user, else the active company. A nested call returns at once.
    void CargarConfiguracionEmpresa(std::string_view ruta);
    // The VELDORIX branch: reads the company file at `ruta`. A company that cannot be opened counts as not
    // configured.
    void LeerConfiguracionArchivoEmpresa(std::string_view ruta);
    // The value behind the first "=" of the first text line that begins with `clave` (case ignored), read
    // from the whole company file `contenido` (Windows-1252); "" or no such line gives `defecto`.
    static std::string LeerClaveFichero(std::string_view contenido, std::string_view clave,
                                        std::string_view defecto);

    // Opens `ruta`; while it wants a password, tries and asks for the remembered ones in their order. `pedir`
    // shows the prompt (nothing = cancelled). Throws link::ErrorEnlace when it stays closed, FinDePrograma
    // when a person cancels the prompt.
    void AbrirConClaves(link::Enlace& enlace, std::string_view ruta,
                        const std::function<std::optional<std::string>()>& pedir);
    // The company that the setting `ACTIVE` names, by the loop above.
    void AbrirEmpresaActiva(link::Enlace& enlace);
    // The core's own instance of the link.
    link::Enlace& gEnlace();

  private:
    void cargarVXCRM(std::string_view ruta);
    std::string rutaActiva();
    std::unique_ptr<link::Enlace> gEnlace_;
    bool cargando_ = false;
};

}  // namespace tarvoline::workflows
