#include "link/criterio_caja.h"

#include <optional>
#include <utility>

#include "core/texto.h"
#include "data/acceso_archivo.h"
#include "data/empresa_suelta.h"
#include "data/monedas.h"
#include "data/utilidades.h"
#include "link/consultas.h"
#include "link/fechas_enlace.h"
#include "link/grabacion.h"
#include "link/importe_texto.h"
#include "link/valores_empresa.h"

namespace tarvoline::link {

namespace {

namespace campo = posicion::iva;
namespace tabla = data::tabla;
constexpr std::string_view si = "1", no = "0";

[[noreturn]] void sinFactura(const FacturaPedida& pedida) {
    throw ErrorEnlace(error_enlace::facturaNoExiste, "No existe la factura " + pedida.factura +
                                                         " para el cliente/proveedor " + pedida.tercero);
}

// Characters of the parents right above the accounts: the last of the five levels that is used.
std::size_t largoDelPadre(const std::array<int, 9>& niveles) {
    constexpr std::size_t ultimoDeNivel = 5;
    for (std::size_t nivel = ultimoDeNivel; nivel > 0; --nivel) {
        if (niveles[nivel] > 0) return static_cast<std::size_t>(niveles[nivel]);
    }
    return 0;
}

// The entry that the caller is building, which comes back when another one has been made.
class AsientoAparte {
  public:
    explicit AsientoAparte(Sesion& sesion)
        : sesion_(sesion),
          pendientes_(std::exchange(sesion.pendientes, {})),
          fecha_(sesion.Fecha),
          numero_(sesion.Número) {}
    ~AsientoAparte() {
        if (!pendientes_.HayPendientes) return;
        sesion_.pendientes = std::move(pendientes_);
        sesion_.Fecha = std::move(fecha_);
        sesion_.Número = std::move(numero_);
    }
    AsientoAparte(const AsientoAparte&) = delete;
    AsientoAparte& operator=(const AsientoAparte&) = delete;

  private:
    Sesion& sesion_;
    Pendientes pendientes_;
    std::string fecha_, numero_;
};

}  // namespace

// The master data decide; where they say nothing, the account's parent does.
std::string CriterioCaja::EsCriterioCaja(std::string_view cuenta) {
    data::Tablas& tablas = sesion_.contexto.tablas();
    const auto leer = [&](int numeroTabla, std::string_view codigo, int posicion) {
        data::TablaCursor cursor(sesion_.contexto.datos, tablas);
        abrirCursor(sesion_, cursor, numeroTabla);
        cursor.Filtrar({iguales(columna::cuenta, codigo, ancho::cuenta)});
        cursor.Primero();
        return cursor.FinDeTabla() ? std::optional<std::string>() : cursor.LeerCampo(posicion);
    };
    if (!leer(tabla::planc, cuenta, posicion::planc::cuenta)) return {};
    std::string marca = leer(tabla::datos, cuenta, posicion::datos::criterioCaja).value_or("");
    if (marca != si && marca != no) {
        const std::string padre = core::Mid(cuenta, 1, largoDelPadre(sesion_.empresa.gNiveles));
        marca = leer(tabla::planc, padre, posicion::planc::criterioCaja).value_or("");
    }
    return marca == si ? std::string(si) : std::string();
}

double CriterioCaja::TotalPendiente(std::string_view cliente, std::string_view factura,
                                    std::string_view fechaFactura) {
    data::cargarMonedas(sesion_.contexto.datos);
    const FacturaPedida pedida{core::Recortar(cliente), core::Recortar(factura),
                               fechaDeTexto(sesion_, fechaFactura)};
    LibroFacturas libro(sesion_);
    FilasFactura filas = libro.enVigor(pedida);
    filas.anadir(libro.delAñoAnterior(pedida));
    if (filas.vacias()) sinFactura(pedida);
    return redondear(filas.totalFactura() - filas.totalCobrado());
}

// Programs that collect invoices at the same time take turns, so that an invoice is not collected twice. An
// entry that the caller is building stays as it is.
void CriterioCaja::cobrar(const CobroCaja& cobro) {
    data::CapaDatos& capa = sesion_.contexto.datos;
    data::cargarMonedas(capa);
    const CobroFactura& datos = cobro.datos;
    const FacturaPedida pedida{core::Recortar(datos.ClienteProveedor), core::Recortar(datos.Factura),
                               fechaDeTexto(sesion_, datos.FechaFactura)};
    const Cobro este{
        cobro, redondear(importeDeTexto(datos.Importe)),
        cobro.hacerAsiento ? ValidarFecha(sesion_, datos.Fecha) : fechaDeTexto(sesion_, datos.Fecha)};
    // A row without a date of collection would count as an invoice.
    if (este.fecha.empty()) rechazarFecha(datos.Fecha);
    data::TablaCursor libro(capa, sesion_.contexto.tablas());
    abrirCursor(sesion_, libro, tabla::iva01);
    libro.Cerrar();
    data::conTurnoEnTabla(capa, data::rutaDeTabla(capa, "IVA01"), [&] {
        const FilasFactura filas = facturaDe(pedida);
        if (cobro.ComprobarCobros) comprobarImporte(filas, este.importe);
        if (!cobro.hacerAsiento) {
            anadirFilas(este, filas, {sesion_.Fecha, sesion_.Número});
            return;
        }
        const AsientoAparte aparte(sesion_);
        hacerAsiento(este);
        anadirFilas(este, filas, {sesion_.Fecha, sesion_.Número});
    });
}

// An invoice of the year before is collected in the books of both years.
FilasFactura CriterioCaja::facturaDe(const FacturaPedida& pedida) {
    LibroFacturas libro(sesion_);
    FilasFactura filas = libro.enVigor(pedida);
    if (filas.factura.empty()) filas.anadir(libro.delAñoAnterior(pedida));
    if (filas.factura.empty()) sinFactura(pedida);
    return filas;
}

void CriterioCaja::comprobarImporte(const FilasFactura& filas, double importe) const {
    const double total = redondear(filas.totalFactura());
    if (importe > total) {
        throw ErrorEnlace(error_enlace::superaFactura,
                          "El Importe del cobro es superior al importe de la factura");
    }
    if (importe > redondear(total - filas.totalCobrado())) {
        throw ErrorEnlace(error_enlace::superaRestante,
                          "El Importe del cobro es superior al importe restante de la factura");
    }
}

void CriterioCaja::hacerAsiento(const Cobro& cobro) {
    constexpr int debe = 1, haber = 2;
    const CobroFactura& datos = cobro.pedido.datos;
    ValoresEmpresa valores(sesion_);
    if (valores.leer("iva2").empty()) {
        throw ErrorEnlace(error_enlace::sinCuentasIva,
                          "Error en la personalización de IVA/IGIC. Confirme las cuentas asociadas.");
    }
    const bool esProveedor = cobro.pedido.esProveedor;
    ApunteClass linea;
    linea.Descripción = datos.DescripcionAsiento;
    if (core::Recortar(linea.Descripción).empty())
        linea.Descripción = (esProveedor ? "Pago Factura " : "Cobro Factura ") + datos.Factura;
    linea.Importe = cobro.importe;
    linea.Diario = datos.Diario;
    linea.Canal = datos.Canal;
    linea.Referencia = datos.Referencia;
    linea.NOTAS = datos.NOTAS;
    linea.ArchivoImagen = datos.ArchivoImagen;
    sesion_.Número = valores.siguienteNumero();
    sesion_.Fecha = cobro.fecha;
    linea.Cuenta = core::Recortar(datos.ClienteProveedor);
    linea.TIPO = esProveedor ? debe : haber;
    sesion_.pendientes.anadir(linea);
    linea.Cuenta = core::Recortar(datos.CuentaContable);
    linea.TIPO = esProveedor ? haber : debe;
    sesion_.pendientes.anadir(linea);
    Grabacion grabacion(sesion_);
    grabacion.GrabarAsiento();
    // Without the entry its tax is not due.
    if (!grabacion.entera()) {
        throw platform::ErrorArchivo(platform::error_archivo::dispositivo, sesion_.empresa.gArchivoEmpresa,
                                     "no se ha podido grabar el asiento del cobro");
    }
}

void CriterioCaja::anadirFilas(const Cobro& cobro, const FilasFactura& filas, const FechaAsto& asiento) {
    const CobroFactura& datos = cobro.pedido.datos;
    std::vector<ImportesFila> factura;
    for (const FilaIva& fila : filas.factura)
        factura.push_back(fila.importes);
    const auto partes = repartir(factura, filas.cobradoPorFila(), cobro.importe,
                                 [this](double valor) { return redondear(valor); });
    const TablasAbiertas abiertas(sesion_);
    data::Tablas& tablas = sesion_.contexto.tablas();
    data::TablaCursor cursor(sesion_.contexto.datos, tablas);
    abrirCursor(sesion_, cursor, tabla::iva01);
    for (std::size_t i = 0; i < partes.size(); ++i) {
        FilaIva fila = filas.factura[i];
        const std::string serie = serieDeCobro(fila.texto(campo::srtc));
        fila.importes = partes[i];
        fila.poner(campo::srtc, serie);
        fila.poner(campo::orden, sesion_.contexto.totales().SiguienteOrdenIva(serie));
        fila.poner(campo::fechaCobro, cobro.fecha);
        fila.poner(campo::medioCobro, datos.MedioCobro);
        fila.poner(campo::descripcionMedioCobro, datos.DescripcionMedioCobro);
        if (!core::Recortar(datos.CLAVEOPERACION).empty())
            fila.poner(campo::claveOperacion, datos.CLAVEOPERACION);
        if (!asiento.Asiento.empty()) fila.poner(campo::asiento, asiento.Asiento);
        if (!asiento.Fecha.empty()) fila.poner(campo::fecha, asiento.Fecha);
        cursor.Nuevo();
        fila.escribir(cursor);
        cursor.Actualizar();
        exigirClaves(tablas);
    }
}

double CriterioCaja::redondear(double valor) const {
    return data::Redondear(sesion_.contexto.datos, valor);
}

}  // namespace tarvoline::link
