// Worker: tables as texts, for callers that know none of them.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "data/definicion_tabla.h"
#include "link/sesion.h"

namespace tarvoline::link {

class TablasTexto {
  public:
    explicit TablasTexto(Sesion& sesion) : sesion_(sesion) {}
    std::string Util_LeerTablas();
    std::string Util_LeerCampos(std::string_view tabla);
    std::string Util_LeerDatos(std::string_view tabla, std::string_view campo, std::string_view valor,
                               std::string_view filtro);

  private:
    std::string directorio() const;
    std::shared_ptr<const data::DefinicionTabla> definicion(std::string_view tabla) const;

    Sesion& sesion_;
};

// Throws registroRehusado for a name without content, platform::ErrorArchivo for one that is no name of a
// table.
void exigirNombreTabla(std::string_view tabla);

}  // namespace tarvoline::link
