// Space used against the contracted capacity. Figures are MB in doubles.
#pragma once

#include <string>
#include <string_view>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Espacio : public Flujo {
  public:
    using Flujo::Flujo;

    // Used space as display text; brings gEspacioUsado and the account's figures up to date.
    std::string EspacioOcupado();
    void DatosInformeEspacio();
    void Controlar_capacidad(bool silencioso);
    // True when the file fits. A refusal is shown; `motivo()` then holds the reason.
    bool HayEspacio(std::string_view archivo);
    // For a company that goes up under another user. Both 0: could not be measured.
    void EspacioOtroUsuario(std::string_view usuario, std::string_view clave, double& usado,
                            double& capacidad);
    void Actualiza_Espacio_Ocupado();
    void Imgcapacidad_Click();
    // Contracted capacity of the account in GB; 0 when unknown.
    double CapacidadContratada(std::string_view codigo);
    // Why the last HayEspacio refused: text 2234, or the service's own failure text when measuring failed.
    const std::string& motivo() const { return motivo_; }

  private:
    std::string motivo_;
};

}  // namespace tarvoline::workflows
