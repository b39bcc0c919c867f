// Turns a company into the credentials in force: user, password, folder, account code, extra folders.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tarvoline/enlace.h"
#include "workflows/flujos.h"

namespace tarvoline::workflows {

class ConfiguracionEmpresa : public Flujo {
  public:
    using Flujo::Flujo;
    ~ConfiguracionEmpresa();

    // With an empty path: the session's user, else the active company. A nested call returns at once.
    void CargarConfiguracionEmpresa(std::string_view ruta);
    // The VELDORIX branch: reads the company file at `ruta`. A company that cannot be opened counts as not
    // configured.
    void LeerConfiguracionArchivoEmpresa(std::string_view ruta);
    // After companies that brought their folder along: the one chosen at the window is in force again, else
    // the default one.
    void reponerCarpeta();
    // True when the company last loaded stayed closed for want of its password.
    bool claveRechazada() const { return claveRechazada_; }

    // Opens `ruta`; while it wants a password, tries the remembered ones in their order and asks for one at
    // the first empty place (`pedir`; nothing = cancelled). Throws link::ErrorEnlace when the company stays
    // closed, FinDePrograma when a person cancels the prompt.
    using Pregunta = std::function<std::optional<std::string>()>;
    void AbrirConClaves(link::Enlace& enlace, std::string_view ruta, const Pregunta& pedir);
    // The company that the setting `ACTIVE` names, by the loop above.
    void AbrirEmpresaActiva(link::Enlace& enlace);
    // The core's own instance of the link; made on first use.
    link::Enlace& gEnlace();

    // The value behind the first "=" of the first text line of a company file (Windows-1252, from byte 1025
    // on) that begins with `clave`, case ignored; `defecto` when there is none or it is empty.
    static std::string LeerClaveFichero(std::string_view contenido, std::string_view clave,
                                        std::string_view defecto);

  private:
    void cargarVXCRM(std::string_view ruta, bool activa);
    void leerEmpresaAbierta(link::Enlace& enlace);
    void leerUsuario(link::Enlace& enlace, std::string_view contenido);
    void leerAdjuntos(link::Enlace& enlace);
    std::string rutaActiva() const;
    std::optional<std::string> pedirClave(std::string_view ruta);

    std::unique_ptr<link::Enlace> gEnlace_;
    bool cargando_ = false;
    bool claveRechazada_ = false;
    bool avisadoSinEmpresa_ = false;
};

}  // namespace tarvoline::workflows
