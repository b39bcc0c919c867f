// Worker: statements of accounts.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "link/lector_registros.h"
#include "link/sesion.h"

namespace tarvoline::link {

class Extractos {
  public:
    explicit Extractos(Sesion& sesion) : sesion_(sesion) {}
    // `desde`, `hasta`: stored dates, or "".
    void LeerExtracto(std::string_view cuenta, std::string_view desde, std::string_view hasta, int archivo);
    std::string LeerExtractoEx(std::string_view cuenta, std::string_view desde, std::string_view hasta);

  private:
    // Lines by account, and where the accounts are.
    struct Origen {
        int lineas;
        int clave;           // by account and date
        int posicionCuenta;  // in a line
        int cuentas;         // table of the accounts
    };
    static Origen origenDe(int archivo);
    std::vector<std::string> cuentasComo(const Origen& origen, const std::string& patron);
    void extractoDe(const Origen& origen, const std::string& cuenta, std::string_view desde,
                    std::string_view hasta);
    void recorrer(const Origen& origen, const std::string& cuenta, std::string_view desde,
                  std::string_view hasta,
                  const std::function<void(const Fila& fila, std::int32_t registro)>& alPasar);

    Sesion& sesion_;
};

}  // namespace tarvoline::link
