// The members of Enlace for the portfolio and VAT on a cash basis.
#include "core/texto.h"
#include "data/utilidades.h"
#include "link/enlace_interior.h"
#include "link/importe_texto.h"

namespace tarvoline::link {

namespace {

// What a member calls those that it deals with.
struct TextosCobro {
    const char* sinTercero;
    const char* deTercero;
    const char* importeCero;
    const char* sinCuenta;
};
constexpr TextosCobro dePago{"No existe el proveedor.", " para el proveedor ",
                             "No se puede efectuar un pago a 0",
                             "La cuenta contable de pago no puede estar vacia"};
constexpr TextosCobro deCobro{"No existe el cliente/proveedor.", " para el cliente ",
                              "No se puede efectuar un cobro a 0",
                              "La cuenta contable de cobro no puede estar vacia"};

bool vacio(const std::string& texto) {
    return core::Recortar(texto).empty();
}

void exigir(bool bien, std::uint32_t numero, const std::string& texto) {
    if (!bien) throw ErrorEnlace(numero, texto);
}

void comprobarFactura(const CobroFactura& datos, const TextosCobro& textos) {
    exigir(!vacio(datos.ClienteProveedor), error_enlace::sinTercero, textos.sinTercero);
    exigir(!vacio(datos.Factura), error_enlace::facturaNoExiste,
           "No existe la factura " + datos.Factura + textos.deTercero + datos.ClienteProveedor);
    constexpr int decimales = 2;
    exigir(data::Redondear(importeDeTexto(datos.Importe), decimales) != 0, error_enlace::importeCero,
           textos.importeCero);
}

void comprobarCodigos(const CobroFactura& datos) {
    constexpr double ultimaClave = 8, ultimoMedio = 2;
    exigir(core::Val(datos.CLAVEOPERACION) <= ultimaClave, error_enlace::claveOperacionIncorrecta,
           "Clave operacion incorrecta");
    exigir(core::Val(datos.MedioCobro) <= ultimoMedio, error_enlace::medioCobroIncorrecto,
           "Medio de cobro incorrecto");
}

void comprobar(const CobroFactura& datos, const TextosCobro& textos) {
    comprobarFactura(datos, textos);
    exigir(!vacio(datos.CuentaContable), error_enlace::sinCuentaContable, textos.sinCuenta);
    comprobarCodigos(datos);
    const bool pdf = core::Mayusculas(datos.ArchivoImagen).find(".PDF") != std::string::npos;
    exigir(vacio(datos.ArchivoImagen) || pdf, error_enlace::soloPdf, "Solo se puede importar archivos PDF");
}

}  // namespace

CarteraLeida Enlace::LeerCartera(std::string_view cartera, std::string_view desdeFechaVencimiento,
                                 std::string_view hastaFechaVencimiento, std::string_view cuenta,
                                 std::string_view asiento) {
    return interior_->conEmpresa().LeerCartera({std::string(cartera), std::string(desdeFechaVencimiento),
                                                std::string(hastaFechaVencimiento), std::string(cuenta),
                                                std::string(asiento)});
}

void Enlace::MarcarCartera(std::string_view marca, std::string_view cartera,
                           std::string_view desdeFechaVencimiento, std::string_view hastaFechaVencimiento,
                           std::string_view cuenta, std::string_view asiento) {
    interior_->conEmpresa().MarcarCartera(
        marca, {std::string(cartera), std::string(desdeFechaVencimiento), std::string(hastaFechaVencimiento),
                std::string(cuenta), std::string(asiento)});
}

void Enlace::AnularCartera(std::string_view cartera, std::string_view desdeFechaVencimiento,
                           std::string_view hastaFechaVencimiento, std::string_view cuenta,
                           std::string_view asiento) {
    interior_->conEmpresa().AnularCartera({std::string(cartera), std::string(desdeFechaVencimiento),
                                           std::string(hastaFechaVencimiento), std::string(cuenta),
                                           std::string(asiento)});
}

std::string Enlace::EsCriterioCaja(std::string_view cuenta) {
    return interior_->conEmpresa().EsCriterioCaja(cuenta);
}

double Enlace::TotalPendiente(std::string_view cliente, std::string_view factura,
                              std::string_view fechaFactura) {
    return interior_->conEmpresa().TotalPendiente(cliente, factura, fechaFactura);
}

void Enlace::PagoFacturaCriterioCaja(const CobroFactura& pago) {
    Operaciones& operaciones = interior_->conEmpresa();
    comprobar(pago, dePago);
    operaciones.cobrar({.datos = pago, .esProveedor = true, .hacerAsiento = true, .ComprobarCobros = true});
}

void Enlace::CobroFacturaCriterioCaja(const CobroFactura& cobro) {
    Operaciones& operaciones = interior_->conEmpresa();
    comprobar(cobro, deCobro);
    operaciones.cobrar({.datos = cobro, .esProveedor = false, .hacerAsiento = true, .ComprobarCobros = true});
}

void Enlace::AñadirIvaCriterioCaja(std::string_view cliente, std::string_view factura,
                                   std::string_view importeCobro, std::string_view medioCobro,
                                   std::string_view descripcionMedioCobro, bool comprobarCobros,
                                   std::string_view claveOperacion, std::string_view fechaCobro,
                                   std::string_view fechaFactura) {
    Operaciones& operaciones = interior_->conEmpresa();
    CobroFactura cobro;
    cobro.ClienteProveedor = cliente;
    cobro.Factura = factura;
    cobro.Importe = importeCobro;
    cobro.MedioCobro = medioCobro;
    cobro.DescripcionMedioCobro = descripcionMedioCobro;
    cobro.CLAVEOPERACION = claveOperacion;
    cobro.Fecha = fechaCobro;
    cobro.FechaFactura = fechaFactura;
    comprobarFactura(cobro, deCobro);
    comprobarCodigos(cobro);
    exigir(!vacio(cobro.DescripcionMedioCobro), error_enlace::sinDescripcionMedio,
           "Descripcion del Medio de cobro incorrecta");
    operaciones.cobrar(
        {.datos = cobro, .esProveedor = false, .hacerAsiento = false, .ComprobarCobros = comprobarCobros});
}

}  // namespace tarvoline::link
