// Worker: identifiers of entries, by which other programs know them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "link/sesion.h"

namespace tarvoline::link {

class Identificadores {
  public:
    explicit Identificadores(Sesion& sesion) : sesion_(sesion) {}
    std::string leerGuid(std::string_view asiento);
    void grabarGuid(std::string_view asiento, std::string_view guid);
    std::vector<std::string> LeerFechasAsiento(std::string_view asiento);
    std::vector<std::string> LeerAsientosGuid(std::string_view guid);

  private:
    void grabarFila(std::string_view asiento, std::string_view guid);

    Sesion& sesion_;
};

// A random identifier, version 4 of RFC 4122: 36 characters, "xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx".
std::string guidNuevo();

}  // namespace tarvoline::link
