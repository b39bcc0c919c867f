// Lines of a journal as they come from many hands, by their key texts: dates over a year, 2,000 accounts,
// titles that repeat.
#pragma once

#include <random>
#include <string>

#include "almacenes.h"

namespace tarvoline::bench {

class Lineas {
  public:
    explicit Lineas(std::uint64_t semilla) : azar_(semilla) {}

    Textos siguiente() {
        constexpr const char* titulos[] = {"FACTURA NUM ",  "COBRO EFECTO ",       "PAGO PROVEEDOR ",
                                           "NOMINA MES ",   "COMPRA MERCADERIAS ", "RECIBO ",
                                           "TRANSFERENCIA "};
        const std::string fecha = "C4" + cifras(1 + azar_() % 12, 2) + cifras(1 + azar_() % 28, 2);
        const std::string asiento = cifras(azar_() % 60000, 6);
        std::string concepto = titulos[azar_() % 7] + cifras(azar_() % 100000, 6);
        concepto.resize(30, ' ');
        return {fecha + asiento, "4300" + cifras(azar_() % 2000, 6) + fecha, concepto,
                cifras(azar_() % 5000, 6) + fecha};
    }

  private:
    static std::string cifras(std::uint64_t valor, std::size_t ancho) {
        std::string texto = std::to_string(valor);
        if (texto.size() < ancho) texto.insert(0, ancho - texto.size(), '0');
        return texto.substr(texto.size() - ancho);
    }

    std::mt19937_64 azar_;
};

}  // namespace tarvoline::bench
