// Worker: which companies there are, opening one, creating one.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "link/sesion.h"

namespace tarvoline::link {

class AccesoEmpresa {
  public:
    explicit AccesoEmpresa(Sesion& sesion) : sesion_(sesion) {}

    void LoadEmpresas();
    void AbrirEmpresa(std::string_view empresa, std::string_view clave);

  private:
    void crear(std::string_view nombre, std::string_view opciones);
    std::string rutaPedida(std::string_view empresa) const;
    void comprobarArchivo() const;
    void leerCabecera();
    void comprobarClave(std::string_view clave) const;
    void conciliarDirectorioGlobal();

    Sesion& sesion_;
};

}  // namespace tarvoline::link
