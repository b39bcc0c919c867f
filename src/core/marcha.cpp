#include "core/marcha.h"

#include <algorithm>
#include <cmath>

#include "core/formato.h"
#include "core/texto.h"

namespace tarvoline::core {

namespace {

constexpr double megabyte = 1024.0 * 1024.0;
constexpr double longitudPieza = 262144;

// Minutes and seconds, with hours when there are any: "0:45", "1:02:03".
std::string duracion(double segundos) {
    const auto total = static_cast<int>(std::lround(std::min(segundos, 359999.0)));
    const auto resto = std::to_string(total / 60 % 60);
    const auto final = ":" + conCeros(total % 60, 2);
    const int horas = total / 3600;
    return horas == 0 ? resto + final : std::to_string(horas) + ":" + conCeros(total / 60 % 60, 2) + final;
}

}  // namespace

std::string textoMarcha(const Transferencia& transferencia, double ahora, bool espanol) {
    if (!transferencia.activa) {
        return {};
    }
    const double espera = transferencia.esperandoServicio ? ahora - transferencia.esperaDesde : 0;
    if (espera >= esperaCallada) {
        return (espanol ? "Esperando al servicio desde hace " : "Waiting for the service, for ") +
               duracion(espera);
    }
    if (transferencia.piezas < piezasParaEstimar || transferencia.segundos <= 0) {
        return espanol ? "Tiempo restante desconocido" : "Time left unknown";
    }
    // Pieces of this run alone: what an earlier one has sent says nothing of the line of today.
    const double velocidad = transferencia.piezas * longitudPieza / transferencia.segundos;
    const auto faltan = static_cast<double>(transferencia.total - transferencia.hecho);
    return formatoImporte(velocidad / megabyte) + " MB/s, " +
           (espanol ? "quedan " + duracion(faltan / velocidad) : duracion(faltan / velocidad) + " left");
}

}  // namespace tarvoline::core
