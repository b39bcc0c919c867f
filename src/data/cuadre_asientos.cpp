#include "data/cuadre_asientos.h"

#include <cmath>

#include "core/texto.h"
#include "data/fechas.h"
#include "data/utilidades.h"
#include "data/verificacion_totales.h"

namespace tarvoline::data {

namespace {

constexpr std::size_t anchoFecha = 6;
// Less than half of the smallest amount that a currency here knows.
constexpr double menosDeNada = 0.0005;

}  // namespace

std::string frase(const AsientoDescuadrado& asiento) {
    constexpr int decimales = 2;
    const std::string registros =
        asiento.desde == asiento.hasta
            ? "registro " + std::to_string(asiento.desde)
            : "registros " + std::to_string(asiento.desde) + " a " + std::to_string(asiento.hasta);
    return "Asiento " + asiento.numero + " del " + FechaCompleta(asiento.fecha) +
           ": no cuadra, debe menos haber " + textoDeImporte(Redondear(asiento.exceso, decimales)) +
           " (EXTRA " + registros + ").";
}

void CuadreAsientos::anadir(std::int64_t registro, std::string_view fecha, std::string_view asiento,
                            double importe) {
    clave_.assign(fecha);
    clave_.resize(anchoFecha, ' ');
    clave_.append(asiento);
    const auto [sitio, nuevo] = abiertos_.try_emplace(clave_);
    Resto& resto = sitio->second;
    if (nuevo) resto.desde = registro;
    resto.hasta = registro;
    resto.suma.anadir(importe);
    if (std::fabs(resto.suma.valor()) < menosDeNada) abiertos_.erase(sitio);
}

std::vector<AsientoDescuadrado> CuadreAsientos::descuadrados() const {
    std::vector<AsientoDescuadrado> todos;
    for (const auto& [clave, resto] : abiertos_) {
        AsientoDescuadrado uno;
        uno.fecha = core::Recortar(clave.substr(0, anchoFecha));
        uno.numero = core::Recortar(core::aUtf8(clave.substr(anchoFecha)));
        uno.exceso = resto.suma.valor();
        uno.desde = resto.desde;
        uno.hasta = resto.hasta;
        todos.push_back(std::move(uno));
    }
    return todos;
}

}  // namespace tarvoline::data
