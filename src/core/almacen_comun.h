// The common services object: settings, prompts, documents and reports under the names that all routines use.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/ajustes.h"
#include "core/escritorio.h"

namespace tarvoline::core {

class AlmacenComun {
  public:
    AlmacenComun(Ajustes& ajustes, Escritorio& escritorio) : ajustes_(ajustes), escritorio_(escritorio) {}

    // Masked prompt of at most `longitud` characters; nothing when cancelled.
    std::optional<std::string> Pedir(std::string_view texto, std::string_view titulo = {}, int longitud = 4);
    void Abrir(std::string_view documento) { escritorio_.Abrir(documento); }
    std::string ElegirCarpeta(std::string_view titulo);  // "" when cancelled
    std::string Leer(std::string_view clave, std::string_view seccion = {}, std::string_view defecto = {},
                     std::string_view producto = {}) const {
        return ajustes_.leer(clave, seccion, defecto, producto);
    }
    // A store that cannot be written is told in a box; the program goes on.
    void Grabar(std::string_view clave, std::string_view valor, std::string_view seccion = {},
                std::string_view producto = {});
    void MostrarListado(const Listado& listado) { escritorio_.MostrarListado(listado); }

  private:
    Ajustes& ajustes_;
    Escritorio& escritorio_;
};

}  // namespace tarvoline::core
