// Worker: the persons that all companies share, in one table of the global directory. No company need be
// open.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "data/tabla_cursor.h"
#include "link/sesion.h"

namespace tarvoline::link {

class RegistroGlobal {
  public:
    // Opens the table, which comes into being when it is missing.
    explicit RegistroGlobal(Sesion& sesion);
    // Throws registroRehusado for data without a tax number.
    static void exigirNif(const DatosGlobalClass& datos);
    std::int32_t LeerDatosGlobales(std::string_view nif);
    void CrearDatosGloblales(const DatosGlobalClass& datos);
    bool ExisteNifDatosGlobales(std::string_view nif);
    // Makes the person of this number, or changes, with `actualizar`, the one that there is: `escribir` fills
    // the row, or the fields of it that change.
    void guardar(const std::string& nif, bool actualizar,
                 const std::function<void(data::TablaCursor&)>& escribir);

  private:
    void situar(std::string_view nif);

    Sesion& sesion_;
    data::TablaCursor cursor_;
    std::string ruta_;
};

}  // namespace tarvoline::link
