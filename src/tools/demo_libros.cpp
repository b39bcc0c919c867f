#include "tools/demo_libros.h"

#include <array>

#include "core/texto.h"
#include "data/utilidades.h"
#include "tools/demo_nombres.h"

namespace tarvoline::tools {

namespace {

constexpr int diasPorMes = 28, meses = 12;
constexpr int debito = 1, abono = 2;

// Accounts of the chart that ships.
constexpr const char* capital = "1000000000";
constexpr const char* compras = "6000000000";
constexpr const char* ventas = "7000000000";
constexpr const char* sueldos = "6400000000";
constexpr const char* seguridadSocial = "6420000000";
constexpr const char* organismos = "4760000000";
constexpr const char* retenciones = "4751000000";
constexpr const char* porPagar = "4650000000";

constexpr double capitalInicial = 60000, rentaMensual = 1450, retencionRenta = 19;

struct Tipo {
    const char* porcentaje;
    double tanto;
};
constexpr std::array<Tipo, 3> tipos{{{"21.00", 21}, {"10.00", 10}, {"4.00", 4}}};

double centimos(double importe) {
    return data::Redondear(importe, 2);
}

// The account of a tax by its percentage: 477 of sales, 472 of purchases.
std::string cuentaIva(bool venta, double tanto) {
    return (venta ? "4770" : "4720") + core::conCeros(static_cast<int>(tanto), 6);
}

}  // namespace

int LibrosDemo::contabilizar() {
    crearCuentas();
    crearPresupuestos(enlace_, azar_);
    crearInmovilizado(enlace_, encargo_.anio);
    apertura();
    int hechas = 0;
    for (mes_ = 1; mes_ <= meses; ++mes_) {
        const int hasta = static_cast<int>(static_cast<long long>(encargo_.operaciones) * mes_ / meses);
        const int enElMes = hasta - hechas;
        alquiler();
        for (int i = 0; i < enElMes; ++i, ++hechas) {
            dia_ = 1 + i * diasPorMes / enElMes;
            operacion();
        }
        nomina();
    }
    return asientos_;
}

std::string LibrosDemo::crearCuenta(const std::string& patron, const std::string& titulo,
                                    const std::string& nif) {
    std::string cuenta = patron;
    enlace_.CrearCuenta(cuenta, titulo, "0", false, nif);
    return cuenta;
}

void LibrosDemo::crearCuentas() {
    for (int i = 0; i < std::max(2, encargo_.terceros); ++i) {
        const bool cliente = i % 2 == 0;
        auto& suyos = cliente ? clientes_ : proveedores_;
        // The first one of each is on a cash basis.
        Tercero tercero{{}, cliente ? persona(azar_) : sociedad(azar_), nif(azar_), suyos.empty()};
        tercero.cuenta = (cliente ? "430" : "400") + core::conCeros(static_cast<int>(suyos.size()) + 1, 7);
        crearCuenta(tercero.cuenta, tercero.nombre, tercero.nif);
        crearDatos(enlace_, azar_, tercero);
        suyos.push_back(tercero);
    }
    banco_ = crearCuenta("5720000001", "Banco, cuenta corriente");
    crearCuenta(capital, "Capital social");
    local_ = crearCuenta("6210000001", "Alquiler de las tiendas");
    std::string analitica = local_;
    enlace_.CrearCuenta(analitica, "", "-6");
    for (const char* tienda : {"Tienda del centro", "Tienda de la playa", "Obrador"}) {
        std::string codigo = "100" + std::to_string(tiendas_.size() + 1);
        enlace_.CrearAnalitica(codigo, tienda);
        tiendas_.push_back(codigo);
    }
}

void LibrosDemo::apertura() {
    abrirAsiento("Asiento de apertura");
    debe(banco_, capitalInicial, "A");
    haber(capital, capitalInicial, "A");
    cerrarAsiento();
}

// A sale or a purchase, and now and then the oldest invoice is settled.
void LibrosDemo::operacion() {
    factura(!azar_.unaDeCada(3));
    if (pendientes_.size() > 6 && azar_.unaDeCada(2)) {
        liquidar(pendientes_.front());
        pendientes_.pop_front();
    }
}

void LibrosDemo::factura(bool venta) {
    const auto& todos = venta ? clientes_ : proveedores_;
    const Tercero& tercero =
        todos[static_cast<std::size_t>(azar_.entre(0, static_cast<int>(todos.size()) - 1))];
    const Tipo& tipo = tipos[static_cast<std::size_t>(azar_.entre(0, 2))];
    const double base = azar_.importe(2500);
    const double cuota = centimos(base * tipo.tanto / 100), total = centimos(base + cuota);
    abrirAsiento((venta ? "Venta de " : "Compra de ") + articulo(azar_));
    const std::string numero = (venta ? "F" : azar_.cifras(3) + "/") + enlace_.Número();
    referencia_ = numero;
    const std::string iva = cuentaIva(venta, tipo.tanto);
    if (venta) {
        debe(tercero.cuenta, total);
        haber(ventas, base);
        haber(iva, cuota);
    } else {
        debe(compras, base);
        debe(iva, cuota);
        haber(tercero.cuenta, total);
    }
    enlace_.AddVAT(tercero.cuenta, iva, numero, fecha(), tipo.porcentaje, venta ? "R" : "S", base, total, 0,
                   tercero.nombre, tercero.nif, "", "", numero, "", 0, "");
    enlace_.AñadirCartera(vencimiento(), tercero.cuenta, venta ? "COBROS" : "PAGOS", concepto_, total);
    cerrarAsiento();
    pendientes_.push_back({tercero, numero, enlace_.Número(), total, venta});
}

void LibrosDemo::liquidar(const Pendiente& pendiente) {
    enlace_.MarcarCartera("PAG", "", "", "", pendiente.tercero.cuenta, pendiente.asiento);
    if (pendiente.tercero.criterioCaja) {
        liquidarDeCaja(pendiente);
        return;
    }
    abrirAsiento((pendiente.deCliente ? "Cobro de " : "Pago a ") + pendiente.tercero.nombre);
    if (pendiente.deCliente) {
        debe(banco_, pendiente.importe);
        haber(pendiente.tercero.cuenta, pendiente.importe);
    } else {
        debe(pendiente.tercero.cuenta, pendiente.importe);
        haber(banco_, pendiente.importe);
    }
    cerrarAsiento();
}

// In two parts, the tax of each falling due with it.
void LibrosDemo::liquidarDeCaja(const Pendiente& pendiente) {
    const double mitad = centimos(pendiente.importe / 2);
    for (const double parte : {mitad, centimos(pendiente.importe - mitad)}) {
        if (parte == 0) continue;
        link::CobroFactura cobro;
        cobro.ClienteProveedor = pendiente.tercero.cuenta;
        cobro.Factura = pendiente.factura;
        cobro.Importe = std::to_string(parte);
        cobro.CuentaContable = banco_;
        cobro.Fecha = fecha();
        cobro.MedioCobro = "1";
        cobro.DescripcionMedioCobro = "Transferencia";
        if (pendiente.deCliente) {
            enlace_.CobroFacturaCriterioCaja(cobro);
        } else {
            enlace_.PagoFacturaCriterioCaja(cobro);
        }
        ++asientos_;
    }
}

// The rent of the shops, divided among them, with what is kept back for the tax office.
void LibrosDemo::alquiler() {
    dia_ = 1;
    const double cuota = centimos(rentaMensual * 0.21),
                 retenido = centimos(rentaMensual * retencionRenta / 100);
    abrirAsiento("Alquiler del mes");
    referencia_ = "R" + enlace_.Número();
    debe(local_, rentaMensual);
    debe(cuentaIva(false, 21), cuota);
    haber(retenciones, retenido);
    haber(banco_, centimos(rentaMensual + cuota - retenido));
    enlace_.AddVAT(banco_, cuentaIva(false, 21), referencia_, fecha(), "21.00", "S", rentaMensual,
                   centimos(rentaMensual + cuota), 0, "Inmobiliaria Yáñez, S.L.", "12345678Z", "", "",
                   referencia_, "", retencionRenta, "");
    repartir(local_, rentaMensual);
    cerrarAsiento();
}

void LibrosDemo::nomina() {
    dia_ = diasPorMes;
    const double bruto = 4200 + azar_.entre(0, 600), cargo = centimos(bruto * 0.3115);
    const double cotizado = centimos(bruto * 0.0647), retenido = centimos(bruto * 0.12);
    const double neto = centimos(bruto - cotizado - retenido);
    abrirAsiento("Nóminas del mes");
    debe(sueldos, bruto);
    debe(seguridadSocial, cargo);
    haber(organismos, centimos(cargo + cotizado));
    haber(retenciones, retenido);
    haber(porPagar, neto);
    cerrarAsiento();
    abrirAsiento("Pago de las nóminas");
    debe(porPagar, neto);
    haber(banco_, neto);
    cerrarAsiento();
}

void LibrosDemo::abrirAsiento(const std::string& concepto) {
    enlace_.Fecha(fecha());
    enlace_.Número("");
    concepto_ = concepto;
    referencia_.clear();
}

void LibrosDemo::debe(const std::string& cuenta, double importe, const std::string& diario) {
    enlace_.AñadirApunte(cuenta, concepto_, debito, importe, diario, 0, "N", referencia_);
}

void LibrosDemo::haber(const std::string& cuenta, double importe, const std::string& diario) {
    enlace_.AñadirApunte(cuenta, concepto_, abono, importe, diario, 0, "N", referencia_);
}

// Among the shops, the last of which takes the cents that are left.
void LibrosDemo::repartir(const std::string& cuenta, double importe) {
    double resto = importe;
    for (std::size_t i = 0; i < tiendas_.size(); ++i) {
        const bool ultima = i + 1 == tiendas_.size();
        const double parte = ultima ? resto : centimos(importe * azar_.entre(20, 40) / 100);
        enlace_.AñadirAnalitica(cuenta, tiendas_[i], "", debito, parte);
        resto = centimos(resto - parte);
    }
}

void LibrosDemo::cerrarAsiento() {
    enlace_.GrabarAsiento();
    ++asientos_;
}

std::string LibrosDemo::fecha() const {
    return core::conCeros(dia_, 2) + "/" + core::conCeros(mes_, 2) + "/" + std::to_string(encargo_.anio);
}

// A month later; what was sold in December falls due in the next year.
std::string LibrosDemo::vencimiento() const {
    const bool pasa = mes_ == meses;
    return core::conCeros(dia_, 2) + "/" + core::conCeros(pasa ? 1 : mes_ + 1, 2) + "/" +
           std::to_string(encargo_.anio + (pasa ? 1 : 0));
}

}  // namespace tarvoline::tools
