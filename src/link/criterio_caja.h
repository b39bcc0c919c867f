// Worker: VAT on a cash basis.
#pragma once

#include <string>
#include <string_view>

#include "link/factura_caja.h"
#include "link/operaciones.h"
#include "link/sesion.h"

namespace tarvoline::link {

class CriterioCaja {
  public:
    explicit CriterioCaja(Sesion& sesion) : sesion_(sesion) {}
    std::string EsCriterioCaja(std::string_view cuenta);
    double TotalPendiente(std::string_view cliente, std::string_view factura, std::string_view fechaFactura);
    void cobrar(const CobroCaja& cobro);

  private:
    // What is needed to write the rows of a collection, once it is sure that it may be.
    struct Cobro {
        const CobroCaja& pedido;
        double importe;
        std::string fecha;  // of the collection, as stored
    };

    FilasFactura facturaDe(const FacturaPedida& pedida);
    void comprobarImporte(const FilasFactura& filas, double importe) const;
    void hacerAsiento(const Cobro& cobro);
    // `asiento`: what the rows bear; an empty part leaves that of the invoice.
    void anadirFilas(const Cobro& cobro, const FilasFactura& filas, const FechaAsto& asiento);
    double redondear(double valor) const;

    Sesion& sesion_;
};

}  // namespace tarvoline::link
