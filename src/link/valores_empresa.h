// Worker: named values of the open company, and its entry numbers.
#pragma once

#include <string>
#include <string_view>

#include "link/sesion.h"

namespace tarvoline::link {

class ValoresEmpresa {
  public:
    explicit ValoresEmpresa(Sesion& sesion) : sesion_(sesion) {}

    std::string leer(std::string_view nombre);
    void grabar(std::string_view nombre, std::string_view valor);
    std::string GetTotal(std::string_view nombre);
    void PutTotal(std::string_view nombre, std::string_view valor);
    std::string GET_TOTAL(std::string_view nombre);
    void PUT_TOTAL(std::string_view nombre, std::string_view valor, std::string_view archivo);
    std::string EmpresaAñoAnterior();
    // Takes the next entry number from the company file, six digits. Throws platform::ErrorArchivo
    // permisoDenegado when the file stays held.
    std::string siguienteNumero();

  private:
    Sesion& sesion_;
};

}  // namespace tarvoline::link
