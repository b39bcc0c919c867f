// A year of a small bakery's books, posted through the link: opening, sales and purchases with their VAT and
// portfolio, collections and payments (of one customer and one supplier on a cash basis), the rent with its
// withholding, payroll, analytic lines for the shops; master data, budgets and fixed assets.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "tarvoline/enlace.h"
#include "tools/demo_azar.h"
#include "tools/demo_registros.h"

namespace tarvoline::tools {

struct EncargoLibros {
    int anio = 0;         // accounting year, four digits
    int operaciones = 0;  // sales and purchases
    int terceros = 0;     // customers and suppliers
};

class LibrosDemo {
  public:
    // `enlace` has the company open; it is borrowed, as is `azar`.
    LibrosDemo(link::Enlace& enlace, Azar& azar, const EncargoLibros& encargo)
        : enlace_(enlace), azar_(azar), encargo_(encargo) {}
    // Throws link::ErrorEnlace. Returns how many entries there are.
    int contabilizar();

  private:
    using Tercero = PersonaDemo;
    // An invoice that has not been settled yet.
    struct Pendiente {
        Tercero tercero;
        std::string factura, asiento;
        double importe = 0;
        bool deCliente = false;
    };

    void crearCuentas();
    std::string crearCuenta(const std::string& patron, const std::string& titulo,
                            const std::string& nif = {});
    void apertura();
    void operacion();
    void factura(bool venta);
    void liquidar(const Pendiente& pendiente);
    void liquidarDeCaja(const Pendiente& pendiente);
    void alquiler();
    void nomina();

    void abrirAsiento(const std::string& concepto);
    void debe(const std::string& cuenta, double importe, const std::string& diario = "1");
    void haber(const std::string& cuenta, double importe, const std::string& diario = "1");
    void repartir(const std::string& cuenta, double importe);
    void cerrarAsiento();
    std::string fecha() const;
    std::string vencimiento() const;

    link::Enlace& enlace_;
    Azar& azar_;
    EncargoLibros encargo_;
    std::vector<Tercero> clientes_, proveedores_;
    std::deque<Pendiente> pendientes_;
    std::vector<std::string> tiendas_;  // analytic accounts
    std::string banco_, local_;
    int mes_ = 1, dia_ = 1;
    std::string concepto_, referencia_;
    int asientos_ = 0;
};

}  // namespace tarvoline::tools
