// How a collection under the cash-basis regime is divided among the rates of its invoice: pure arithmetic.
#pragma once

#include <vector>

#include "link/calculo_iva.h"

namespace tarvoline::link {

// The amounts of a row of the book of invoices.
struct ImportesFila {
    double base = 0, cuota = 0, recargo = 0, cuotaProrrata = 0, total = 0, retencion = 0;
    double liquido = 0;  // what is collected

    bool operator==(const ImportesFila&) const = default;
};

// The amounts of `filas` added up.
ImportesFila sumar(const std::vector<ImportesFila>& filas);

// One row for each rate of `factura`, in its order. Each amount is its part of the invoice, as `importe` is
// of the net of the whole invoice, rounded; the nets of the rows add up to `importe`. An amount that leaves
// nothing pending takes of each rate what `cobrado`, what has been collected of it so far, leaves: then all
// parts add up to the invoice. An invoice whose net is 0 is not divided: its rows stay at 0 but for the net
// of the last one.
std::vector<ImportesFila> repartir(const std::vector<ImportesFila>& factura,
                                   const std::vector<ImportesFila>& cobrado, double importe,
                                   const Redondeo& redondear);

}  // namespace tarvoline::link
