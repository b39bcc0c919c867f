// Worker: the register of fixed assets of a company.
#pragma once

#include <cstdint>
#include <string_view>

#include "data/tabla_cursor.h"
#include "link/sesion.h"

namespace tarvoline::link {

class Inmovilizado {
  public:
    explicit Inmovilizado(Sesion& sesion) : sesion_(sesion) {}
    std::int32_t LeerInmovilizado(std::string_view codigo);
    void CrearInmovilizado(const InmoClass& datos);

  private:
    Sesion& sesion_;
};

}  // namespace tarvoline::link
