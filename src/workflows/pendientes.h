// The companies that the accounting programs have marked as due: settings EMP1 to EMP100 hold their paths,
// ERROR1 to ERROR100 the last failure of the same slot. A company is pending exactly while its EMP setting
// exists.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "workflows/flujos.h"
#include "workflows/panel.h"

namespace tarvoline::workflows {

// Drops the first and the last character; "" stays "".
std::string QuitarComillas(std::string_view texto);

class Pendientes : public Flujo {
  public:
    using Flujo::Flujo;

    // Works through the slots until a scan has finished with no success. True when no slot failed and nothing
    // stopped the run. Each outcome is noted in Estado::resumen.
    bool SubirPendientesBatch(bool mostrar);
    void SubirPendientes_Click();

  private:
    enum class Fin { vacia, enviada, fallida, detenida };
    // Whether the run may go on, nothing failed, and something was sent.
    struct Vuelta {
        bool sigue = true;
        bool todoBien = true;
        bool huboExito = false;
    };
    Vuelta recorrer(bool mostrar);
    void reponer();
    Fin subirRanura(int ranura, bool mostrar);
    Fin empaquetarYSubir(int ranura, const std::string& ruta, bool mostrar);
    Fin anotarFallo(int ranura, const std::string& ruta, const std::string& texto);
    bool anotarExito(int ranura, const std::string& ruta);
    std::string leer(std::string_view clave, int ranura) const;
    void grabar(std::string_view clave, int ranura, std::string_view valor);
    std::string cargarEmpresa(const std::string& ruta);

    std::optional<CarpetasMostradas> carpetas_;  // on show when the run began
};

}  // namespace tarvoline::workflows
