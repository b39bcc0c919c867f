#include "link/calculo_iva.h"

namespace tarvoline::link {

namespace {

constexpr double porciento = 0.01;
constexpr double tolerancia = 0.02;

}  // namespace

ImportesIva calcularIva(const data::TipoIva& tipo, double base, double total, const Redondeo& redondear) {
    ImportesIva importes;
    const bool desdeTotal = base == 0;
    // Both percentages are kept as singles, and are added as such.
    const float tanto = tipo.Cuota + tipo.Recargo;
    importes.base = desdeTotal ? redondear(total / (static_cast<double>(tanto) * porciento + 1)) : base;
    importes.cuota = redondear(static_cast<double>(tipo.Cuota) * importes.base * porciento);
    importes.recargo = redondear(static_cast<double>(tipo.Recargo) * importes.base * porciento);
    importes.total = importes.base + importes.cuota + importes.recargo;
    const bool manda = desdeTotal || total != 0;
    if (!manda) return importes;
    const double diferencia = redondear(importes.total - total);
    importes.discrepa = !desdeTotal && (diferencia < -tolerancia || diferencia > tolerancia);
    if (diferencia != 0) importes.cuota = redondear(total - (importes.base + importes.recargo));
    importes.total = total;
    return importes;
}

double cuotaProrrata(double cuota, int prorrata) {
    return prorrata == 0 ? 0 : cuota - prorrata * porciento * cuota;
}

double liquidoConRetencion(const ImportesIva& importes, double porcentaje, bool regimenEspecial,
                           const Redondeo& redondear) {
    const double sobre = regimenEspecial ? importes.total : redondear(importes.base);
    return importes.total - sobre * porcentaje * porciento;
}

}  // namespace tarvoline::link
