// Worker: statements of accounts.
#pragma once

#include <string>
#include <string_view>

#include "link/sesion.h"

namespace tarvoline::link {

class Extractos {
  public:
    explicit Extractos(Sesion& sesion) : sesion_(sesion) {}
    // `desde`, `hasta`: stored dates, or "".
    void LeerExtracto(std::string_view cuenta, std::string_view desde, std::string_view hasta, int archivo);
    std::string LeerExtractoEx(std::string_view cuenta, std::string_view desde, std::string_view hasta);

  private:
    Sesion& sesion_;
};

}  // namespace tarvoline::link
