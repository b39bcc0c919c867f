// Worker: taking back what has been posted. The totals of a line go before the line; a line that somebody
// else has removed meanwhile is passed over.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "link/sesion.h"

namespace tarvoline::link {

class Anulacion {
  public:
    explicit Anulacion(Sesion& sesion) : sesion_(sesion) {}
    // `fecha`: stored.
    std::int32_t AnularAsiento(std::string_view fecha, std::string_view numero);
    void AnularApuntePorReferencia(std::string_view referencia, bool incluirIva, bool incluirAnalitica);
    void AnularApuntePorRegistro(std::int32_t registro, bool incluirAnalitica);
    void AnularCuenta(std::string_view cuenta);

  private:
    // What a line tells before it goes.
    struct Apunte {
        FechaAsto asiento;
        std::string cuenta;
        std::string numeroAnalitica;
        double importe = 0;
    };

    std::optional<Apunte> leerApunte(std::int32_t registro);
    bool quitarApunte(std::int32_t registro);
    void quitarAnalitica(const std::string& numero);
    void quitarFilas(int tabla, const std::vector<std::int32_t>& registros);
    void quitarIva(std::string_view referencia, const std::vector<FechaAsto>& asientos, double cuotas);
    bool quitar(int tabla, std::int32_t registro, const std::function<void()>& antes = {});

    Sesion& sesion_;
};

}  // namespace tarvoline::link
