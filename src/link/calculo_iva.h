// The amounts of a line of VAT: pure arithmetic.
#pragma once

#include <functional>

#include "data/tipos_iva.h"

namespace tarvoline::link {

using Redondeo = std::function<double(double)>;

struct ImportesIva {
    double base = 0, cuota = 0, recargo = 0, total = 0;
    bool discrepa = false;  // the total given differs from the sum by more than two cents
};

// `base` 0: worked out from `total`, its gross amount. Else the total given, if it is not 0, holds, and the
// quota takes the difference.
ImportesIva calcularIva(const data::TipoIva& tipo, double base, double total, const Redondeo& redondear);

// The part of the quota that pro rata (a percentage) leaves; not rounded. 0 without pro rata.
double cuotaProrrata(double cuota, int prorrata);

// The net of an invoice with a withholding of `porcentaje`: of the total in a special regime, of the base
// else.
double liquidoConRetencion(const ImportesIva& importes, double porcentaje, bool regimenEspecial,
                           const Redondeo& redondear);

}  // namespace tarvoline::link
