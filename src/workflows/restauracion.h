// A stored archive becomes a working company again, over the old one or beside it under a free number.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Restauracion : public Flujo {
  public:
    using Flujo::Flujo;

    void Restaurar_Click();
    // What each failure and step shows is told in the box; true when the company is on disk.
    bool RestaurarEmpresa(std::string_view archivoZip);
    // Path and name of the company that the last RestaurarEmpresa made; "" when it made none.
    const std::string& rutaRestaurada() const { return rutaRestaurada_; }

    // True when every file of the company can be opened exclusively.
    bool EmpresaLibre(std::string_view archivo);
    void TerminarProceso(std::string_view nombre);

  private:
    std::string rutaRestaurada_;
};

}  // namespace tarvoline::workflows
