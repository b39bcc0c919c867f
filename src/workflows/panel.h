// The transfer panel, the lock of the window's controls, and the frame that every entry of a person runs in.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

// Title of the boxes that have one.
inline constexpr std::string_view tituloPrograma = "Tarvoline";

// The folders on show at one moment: a company of VXCRM puts its own in their place while it is worked on.
class CarpetasMostradas {
  public:
    explicit CarpetasMostradas(core::Vista& vista)
        : vista_(vista),
          carpetas_(vista.carpetas),
          elegida_(vista.carpetaElegida),
          texto_(vista.textoCarpetas) {}
    void reponer() {
        vista_.carpetas = carpetas_;
        vista_.carpetaElegida = elegida_;
        vista_.textoCarpetas = texto_;
        vista_.avisar(core::Parte::carpetas);
    }

  private:
    core::Vista& vista_;
    std::vector<std::string> carpetas_;
    int elegida_;
    std::string texto_;
};

class Panel : public Flujo {
  public:
    using Flujo::Flujo;

    // Folder list, toolbar and grid; Stop stays within reach in either case.
    void Desabilitar_Formulario(bool estado);
    // 0 preparing, 1 upload, 2 download, 99 none (and the labels of the transfer emptied).
    void Adaptar_imagenes(int modo);
    // Name without folder, "actual / total" in grouped digits, the total in the display unit.
    void MostrarProgreso(std::string_view nombre, std::int64_t total, std::int64_t actual);
    // "Zip" while a company is packed; limpiarProgreso empties the labels.
    void MostrarEmpaquetado(std::string_view nombre);
    void limpiarProgreso();
    // The gauge (core/barra.h) on the window's view.
    void Barra(double valor, double total = 0);
    void Turno() { entorno_.escritorio.Turno(); }
    // A box with a step mark, in trace mode only.
    void Traza(std::string_view marca);
    // A size in bytes in the display unit with its name: "12.30 MB".
    std::string enUnidad(double bytes) const;

    // Runs one entry of the person (a button, a picture, a double click): returns at once while another runs
    // or the views are being refreshed; else clears the flags of the run before, runs `accion`, and on the
    // way out puts pointer, lock, gauge and panel back. What `accion` throws is shown as a warning titled
    // "Tarvoline" and raises gInterrumpido. Returns whether `accion` ran to its end. gDetener and
    // gInterrumpido are left as the action left them, for whoever tells the outcome.
    bool entrada(const std::function<void()>& accion);

  private:
    void restaurar();
};

}  // namespace tarvoline::workflows
