#include "core/barra.h"

namespace tarvoline::core {
namespace {

int porcentajeDe(double valor, double total) {
    const double porcentaje = 100 / (total / valor);
    if (porcentaje > 100) {
        return 100;
    }
    return porcentaje > 0 ? static_cast<int>(porcentaje) : 0;  // a count below zero draws nothing
}

}  // namespace

void Barra(Estado& estado, Vista& vista, double valor, std::optional<double> total) {
    if (estado.gModoGauge == modo_gauge::ninguno) {
        return;
    }
    Medidor& medidor = vista.medidor;
    const bool final = valor == 0;
    const bool comienzo = valor == -1;
    if (final && estado.gModoGauge == modo_gauge::finVisible) {
        return;
    }
    medidor.visible = !final;
    medidor.porcentaje = 0;
    const bool cuenta = !final && !comienzo && estado.gModoGauge != modo_gauge::limpiarPrimero;
    if (cuenta && total.value_or(0) != 0) {
        medidor.porcentaje = porcentajeDe(valor, *total);
    }
    vista.avisar(Parte::medidor);
}

}  // namespace tarvoline::core
