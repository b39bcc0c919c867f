// Space used against the contracted capacity. Figures are MB in doubles; an account of unknown capacity
// counts as one of 100 MB.
#pragma once

#include <string>
#include <string_view>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Espacio : public Flujo {
  public:
    using Flujo::Flujo;

    // Used space as display text, "" when it could not be had; brings gEspacioUsado and the account's figures
    // up to date. Skipped while the views are being refreshed.
    std::string EspacioOcupado();
    // Fills gEspacioCuenta, the sum of all users of the account, and gInforme, one line for each: user, tab,
    // name, tab, MB.
    void DatosInformeEspacio();
    // The full check: both labels, gCapacidad, gEspacioUsado and gCapacidadExcedida. `silencioso` leaves out
    // the boxes for a missing account code and for too much space in use. A failure at the start of the
    // service's answer ends it without a word. Throws soap::ErrorServicio.
    void Controlar_capacidad(bool silencioso = false);
    // True when the file fits beside what is in use: gEspacioUsado as last measured, or measured anew for a
    // user who is not the session's. A refusal is shown; motivo() then holds the reason. Throws
    // soap::ErrorServicio, platform::ErrorArchivo.
    bool HayEspacio(std::string_view archivo);
    // For a company that goes up under another user. Both 0: could not be measured. Throws
    // soap::ErrorServicio.
    void EspacioOtroUsuario(std::string_view usuario, std::string_view clave, double& usado,
                            double& capacidad);
    // EspacioOcupado, and its label.
    void Actualiza_Espacio_Ocupado();
    // Shows the report. Of an account whose users are not known it tells the user in force alone, with
    // gEspacioUsado when the service does not answer.
    void Imgcapacidad_Click();
    // Contracted capacity of the account in GB; 0 when unknown. Asked of the service when it tells
    // capacities, else of the setting `Capacidad`. Throws soap::ErrorServicio.
    double CapacidadContratada(std::string_view codigo);
    // Why the last HayEspacio refused: text 2234, or the service's own failure text when measuring failed.
    const std::string& motivo() const { return motivo_; }

  private:
    double capacidadContratada(service::ClienteServicio& cliente, const service::Identidad& quien,
                               std::string_view codigo);
    double medirCapacidad(const std::string& datosUsuario, service::ClienteServicio& cliente,
                          bool silencioso);
    // What the service counts for the user in force; "" when it does not say.
    std::string bytesDelUsuario();
    void compararUso(bool silencioso);
    void ponerUsado();
    void revisarUnidad();
    void traza(int paso);

    std::string motivo_;
};

}  // namespace tarvoline::workflows
