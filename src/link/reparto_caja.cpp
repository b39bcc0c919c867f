#include "link/reparto_caja.h"

#include <array>
#include <cstddef>

namespace tarvoline::link {

namespace {

using Importe = double ImportesFila::*;
constexpr std::array<Importe, 7> importes{
    &ImportesFila::base,  &ImportesFila::cuota,     &ImportesFila::recargo, &ImportesFila::cuotaProrrata,
    &ImportesFila::total, &ImportesFila::retencion, &ImportesFila::liquido};

// What is left of each row. The book may have nets with more digits than money has: these, too, are cut from
// one scale.
std::vector<ImportesFila> restar(std::vector<ImportesFila> factura, const std::vector<ImportesFila>& cobrado,
                                 double importe, const Redondeo& redondear) {
    double hastaAqui = 0, cortado = 0;
    for (std::size_t i = 0; i < factura.size(); ++i) {
        hastaAqui += factura[i].liquido - cobrado[i].liquido;
        for (const Importe cual : importes)
            factura[i].*cual = redondear(factura[i].*cual - cobrado[i].*cual);
        const double corte = i + 1 == factura.size() ? importe : redondear(hastaAqui);
        factura[i].liquido = redondear(corte - cortado);
        cortado = corte;
    }
    return factura;
}

// The nets are cut from one rounded scale, so that they add up to `importe`.
std::vector<ImportesFila> enProporcion(std::vector<ImportesFila> filas, double importe, double total,
                                       const Redondeo& redondear) {
    double hastaAqui = 0, cortado = 0;
    for (ImportesFila& fila : filas) {
        hastaAqui += fila.liquido;
        const double corte =
            &fila == &filas.back() || total == 0 ? importe : redondear(hastaAqui * importe / total);
        for (const Importe cual : importes)
            fila.*cual = total == 0 ? 0 : redondear(fila.*cual * importe / total);
        fila.liquido = redondear(corte - cortado);
        cortado = corte;
    }
    return filas;
}

}  // namespace

ImportesFila sumar(const std::vector<ImportesFila>& filas) {
    ImportesFila suma;
    for (const ImportesFila& fila : filas) {
        for (const Importe importe : importes)
            suma.*importe += fila.*importe;
    }
    return suma;
}

std::vector<ImportesFila> repartir(const std::vector<ImportesFila>& factura,
                                   const std::vector<ImportesFila>& cobrado, double importe,
                                   const Redondeo& redondear) {
    const double total = redondear(sumar(factura).liquido);
    const double pendiente = redondear(total - sumar(cobrado).liquido);
    if (redondear(importe - pendiente) == 0) return restar(factura, cobrado, redondear(importe), redondear);
    return enProporcion(factura, redondear(importe), total, redondear);
}

}  // namespace tarvoline::link
