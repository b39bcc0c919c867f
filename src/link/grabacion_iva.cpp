#include "link/grabacion_iva.h"

#include "core/texto.h"
#include "data/fechas.h"
#include "data/utilidades.h"
#include "link/fechas_enlace.h"
#include "link/posiciones.h"
#include "link/tipos_iva_enlace.h"

namespace tarvoline::link {

namespace {

namespace campo = posicion::iva;
constexpr int tabla = data::tabla::iva01;

constexpr int primeraConLetra = 100, porLetra = 10;
// Four of them stand where the long texts go, until a cursor has written these.
constexpr std::string_view sinTexto("\0\0\0\0", 4);

// The two characters by which a row names its rate: digits, from 100 on a letter and a digit.
std::string codigoDe(int numero) {
    if (numero < primeraConLetra) return core::conCeros(numero, 2);
    const int desde = numero - primeraConLetra;
    return static_cast<char>('A' + desde / porLetra) + std::to_string(desde % porLetra);
}

std::string textoProrrata(int prorrata) {
    return prorrata == 0 ? std::string() : std::to_string(prorrata);
}

}  // namespace

GrabacionIva::GrabacionIva(AsientoEnCurso& asiento)
    : asiento_(asiento),
      tipos_(data::TiposIva::leer(asiento.sesion.contexto.datos,
                                  data::rutaTiposIva(asiento.sesion.contexto.datos))) {}

void GrabacionIva::grabar(const IVAClass& linea) {
    data::CapaDatos& datos = asiento_.sesion.contexto.datos;
    const Redondeo redondear = [&](double valor) { return data::Redondear(datos, valor); };
    const std::string orden = numeroOrden(linea);
    ponerIdentidad(linea);
    const std::string codigo = codigoTipo(linea);
    const ImportesIva importes = calcularIva(TipoIvaActual_, linea.Base, linea.TOTAL, redondear);
    if (importes.discrepa) asiento_.aplazado = {error_enlace::errorEnIva, {}};
    asiento_.poner(tabla, campo::tipo, codigo);
    asiento_.poner(tabla, campo::orden, orden);
    ponerImportes(linea, importes);
    ponerInmediato(linea);
    ponerRetencion(linea, importes);
    const auto registro = asiento_.anadir(tabla);
    const std::string descripcion = core::Recortar(linea.SII_DescripcionDocumento);
    const std::string rectificativa = core::Recortar(linea.SII_FacturaRectificativa_DUA);
    if (!registro || (descripcion.empty() && rectificativa.empty())) return;
    asiento_.cambiarRegistro(asiento_.cursorIva, tabla, *registro, [&](data::TablaCursor& cursor) {
        cursor.EscribirCampo(campo::siiDescripcion, 0, descripcion);
        cursor.EscribirCampo(campo::facturaRectificativa, 0, rectificativa);
    });
}

std::string GrabacionIva::numeroOrden(const IVAClass& linea) {
    if (!linea.NumeroOrden.empty()) return linea.NumeroOrden;
    if (linea.Factura != factura_ || linea.SRTC != srtc_) {
        orden_ = asiento_.sesion.contexto.totales().SiguienteOrdenIva(linea.SRTC);
        factura_ = linea.Factura;
        srtc_ = linea.SRTC;
    }
    return orden_;
}

void GrabacionIva::ponerIdentidad(const IVAClass& linea) {
    const Sesion& sesion = asiento_.sesion;
    asiento_.poner(tabla, campo::fecha, sesion.Fecha);
    asiento_.poner(tabla, campo::asiento, sesion.Número);
    asiento_.poner(tabla, campo::cuenta, linea.CuentaClienteProveedor);
    AsientoEnCurso::Tercero tercero{linea.titulo, linea.NIF};
    if (linea.titulo.empty() || linea.NIF.empty()) {
        const AsientoEnCurso::Tercero suyo = asiento_.buscarTercero(linea.CuentaClienteProveedor);
        if (linea.titulo.empty()) tercero.nombre = suyo.nombre;
        if (linea.NIF.empty()) tercero.nif = suyo.nif;
    }
    asiento_.poner(tabla, campo::titulo, tercero.nombre);
    asiento_.poner(tabla, campo::nif, tercero.nif);
    asiento_.poner(tabla, campo::factura, linea.Factura);
}

// The rate of the line, which becomes the one at hand.
std::string GrabacionIva::codigoTipo(const IVAClass& linea) {
    const std::string& texto = linea.TipoIva;
    int numero = 0;
    if (texto.size() <= 2) {
        numero = texto.size() == 2 ? ValTIVA(texto) : core::ValEntero(texto);
    } else {
        const auto porcentaje = static_cast<float>(core::Val(texto));
        for (int i = 1; i <= tipos_.cuantos() && numero == 0; ++i) {
            if (tipos_(i).Cuota + tipos_(i).Recargo == porcentaje) numero = i;
        }
    }
    elegirTipo(numero, linea);
    if (numero == 0) return "00";
    return texto.size() == 2 ? texto : codigoDe(numero);
}

void GrabacionIva::elegirTipo(int numero, const IVAClass& linea) {
    if (numero < 0) {
        // The rate of the line before stays at hand.
        asiento_.aplazado = {error_enlace::tipoIvaNoExiste, linea.TipoIva};
    } else if (numero == 0) {
        TipoIvaActual_ = {};
        TipoIvaActual_.Descripción = "Exento";
    } else {
        TipoIvaActual_ = tipos_(numero);
    }
}

void GrabacionIva::ponerImportes(const IVAClass& linea, const ImportesIva& importes) {
    const std::string fecha = fechaDeTexto(asiento_.sesion, linea.FechaFactura);
    asiento_.poner(tabla, campo::base, importes.base);
    asiento_.poner(tabla, campo::total, importes.total);
    asiento_.poner(tabla, campo::prorrata, textoProrrata(linea.Prorata));
    asiento_.poner(tabla, campo::importeCuota, importes.cuota);
    asiento_.poner(tabla, campo::importeRecargo, importes.recargo);
    asiento_.poner(tabla, campo::cuentaIva, linea.CuentaIVA);
    asiento_.poner(tabla, campo::srtc, linea.SRTC);
    asiento_.poner(tabla, campo::fechaFactura, fecha);
    asiento_.poner(tabla, campo::cuota, comoDoble(TipoIvaActual_.Cuota));
    asiento_.poner(tabla, campo::recargo, comoDoble(TipoIvaActual_.Recargo));
    asiento_.poner(tabla, campo::claveOperacion, linea.CLAVEOPERACION);
    asiento_.poner(tabla, campo::referencia, linea.Referencia);
    asiento_.poner(tabla, campo::cuotaProrrata, cuotaProrrata(importes.cuota, linea.Prorata));
    asiento_.poner(tabla, campo::serieFacturas, linea.SerieFacturas);
    for (const int vacio : {campo::fechaCobro, campo::medioCobro, campo::descripcionMedioCobro})
        asiento_.poner(tabla, vacio, "");
}

// The fields of the immediate supply of information.
void GrabacionIva::ponerInmediato(const IVAClass& linea) {
    const std::string extendida = core::Recortar(linea.SII_FacturaExtendida);
    asiento_.poner(tabla, campo::siiCodigo, core::Recortar(linea.SII_Codigo));
    asiento_.poner(tabla, campo::siiDescripcion, sinTexto);
    asiento_.poner(tabla, campo::siiId, core::Recortar(linea.SII_Id));
    asiento_.poner(tabla, campo::facturaExtendida,
                   extendida.empty() ? core::Recortar(linea.Factura) : extendida);
    asiento_.poner(tabla, campo::facturaRectificativa, sinTexto);
    asiento_.poner(tabla, campo::periodo, periodo(linea));
}

std::string GrabacionIva::periodo(const IVAClass& linea) const {
    constexpr std::int32_t elDelMes = -1;
    const std::int32_t pedido = core::ValEntero(linea.SII_PeriodoPresentacion);
    if (pedido == elDelMes) return core::Mid(asiento_.sesion.Fecha, 3, 2);
    return pedido == 0 ? std::string() : core::Recortar(linea.SII_PeriodoPresentacion);
}

// Without a withholding the amount withheld is that of the line before in this entry.
void GrabacionIva::ponerRetencion(const IVAClass& linea, const ImportesIva& importes) {
    const data::CapaDatos& datos = asiento_.sesion.contexto.datos;
    asiento_.poner(tabla, campo::regimenEspecial, linea.RegimenEspecial);
    if (linea.PorcRetencion == 0) {
        asiento_.poner(tabla, campo::liquido, importes.total);
        return;
    }
    double liquido = linea.Liquido;
    if (data::Redondear(datos, liquido) == 0) {
        const bool especial = !core::Recortar(linea.RegimenEspecial).empty();
        liquido = liquidoConRetencion(importes, linea.PorcRetencion, especial,
                                      [&](double valor) { return data::Redondear(datos, valor); });
    }
    asiento_.poner(tabla, campo::liquido, liquido);
    asiento_.poner(tabla, campo::retencion, importes.total - liquido);
}

}  // namespace tarvoline::link
