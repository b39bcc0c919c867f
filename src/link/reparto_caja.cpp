#include "link/reparto_caja.h"

#include <array>
#include <cstddef>

namespace tarvoline::link {

namespace {

using Importe = double ImportesFila::*;
constexpr std::array<Importe, 7> importes{
    &ImportesFila::base,  &ImportesFila::cuota,     &ImportesFila::recargo, &ImportesFila::cuotaProrrata,
    &ImportesFila::total, &ImportesFila::retencion, &ImportesFila::liquido};

std::vector<ImportesFila> restar(std::vector<ImportesFila> factura, const std::vector<ImportesFila>& cobrado,
                                 const Redondeo& redondear) {
    for (std::size_t i = 0; i < factura.size(); ++i) {
        for (const Importe importe : importes)
            factura[i].*importe = redondear(factura[i].*importe - cobrado[i].*importe);
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
    if (redondear(importe - pendiente) == 0) return restar(factura, cobrado, redondear);
    return enProporcion(factura, redondear(importe), total, redondear);
}

}  // namespace tarvoline::link
