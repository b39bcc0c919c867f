#include "link/lectura_iva.h"

#include "core/texto.h"
#include "data/utilidades.h"
#include "link/fechas_enlace.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace {

namespace iva = posicion::iva;
using data::TablaCursor;

// The row keeps the amount withheld. One without withholding may have that of the line before it, which its
// net amount, the whole of it, tells.
double porcentajeRetenido(TablaCursor& fila) {
    constexpr double ciento = 100;
    constexpr int decimales = 2;
    const double total = fila.LeerNumero(iva::total);
    const bool sobreTotal = !fila.LeerCampo(iva::regimenEspecial).empty();
    const double origen = sobreTotal ? total : fila.LeerNumero(iva::base);
    if (origen == 0 || fila.LeerNumero(iva::liquido) == total) return 0;
    return data::Redondear(fila.LeerNumero(iva::retencion) / origen * ciento, decimales);
}

void leerFactura(const Sesion& sesion, TablaCursor& fila, IVAClass& linea) {
    linea.CuentaClienteProveedor = fila.LeerCampo(iva::cuenta);
    linea.CuentaIVA = fila.LeerCampo(iva::cuentaIva);
    linea.Factura = fila.LeerCampo(iva::factura);
    linea.FechaFactura = fechaCorta(sesion, fila.LeerCampo(iva::fechaFactura));
    linea.SRTC = fila.LeerCampo(iva::srtc);
    linea.titulo = fila.LeerCampo(iva::titulo);
    linea.NIF = fila.LeerCampo(iva::nif);
    linea.NumeroOrden = fila.LeerCampo(iva::orden);
    linea.Referencia = fila.LeerCampo(iva::referencia);
    linea.SerieFacturas = fila.LeerCampo(iva::serieFacturas);
    linea.CLAVEOPERACION = fila.LeerCampo(iva::claveOperacion);
    linea.FechaCobro = fechaCorta(sesion, fila.LeerCampo(iva::fechaCobro));
    linea.MedioCobro = fila.LeerCampo(iva::medioCobro);
    linea.DescripcionMedioCobro = fila.LeerCampo(iva::descripcionMedioCobro);
}

void leerImportes(TablaCursor& fila, IVAClass& linea) {
    linea.TipoIva = fila.LeerCampo(iva::tipo);
    linea.Base = fila.LeerNumero(iva::base);
    linea.TOTAL = fila.LeerNumero(iva::total);
    linea.Prorata = static_cast<std::uint8_t>(core::ValEntero(fila.LeerCampo(iva::prorrata)));
    linea.CuotaProrrata = fila.LeerNumero(iva::cuotaProrrata);
    linea.PorcRetencion = porcentajeRetenido(fila);
    linea.RegimenEspecial = fila.LeerCampo(iva::regimenEspecial);
    linea.Liquido = fila.LeerNumero(iva::liquido);
}

void leerSuministro(TablaCursor& fila, IVAClass& linea) {
    linea.SII_Codigo = fila.LeerCampo(iva::siiCodigo);
    linea.SII_DescripcionDocumento = fila.LeerCampo(iva::siiDescripcion);
    linea.SII_Id = fila.LeerCampo(iva::siiId);
    linea.SII_FacturaExtendida = fila.LeerCampo(iva::facturaExtendida);
    linea.SII_FacturaRectificativa_DUA = fila.LeerCampo(iva::facturaRectificativa);
    linea.SII_PeriodoPresentacion = fila.LeerCampo(iva::periodo);
}

}  // namespace

IVAClass ivaDe(const Sesion& sesion, TablaCursor& fila) {
    IVAClass linea;
    leerFactura(sesion, fila, linea);
    leerImportes(fila, linea);
    leerSuministro(fila, linea);
    return linea;
}

}  // namespace tarvoline::link
