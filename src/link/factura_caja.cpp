#include "link/factura_caja.h"

#include <algorithm>
#include <iterator>

#include "core/carpetas.h"
#include "core/texto.h"
#include "data/acceso_archivo.h"
#include "data/empresa_suelta.h"
#include "data/fechas.h"
#include "link/consultas.h"
#include "link/valores_empresa.h"

namespace tarvoline::link {

namespace {

namespace campo = posicion::iva;

constexpr std::string_view tablaIva = "IVA01";

constexpr std::array textosDeIva{campo::cuenta,
                                 campo::titulo,
                                 campo::nif,
                                 campo::factura,
                                 campo::tipo,
                                 campo::asiento,
                                 campo::cuentaIva,
                                 campo::srtc,
                                 campo::fechaFactura,
                                 campo::orden,
                                 campo::prorrata,
                                 campo::fecha,
                                 campo::referencia,
                                 campo::serieFacturas,
                                 campo::claveOperacion,
                                 campo::fechaCobro,
                                 campo::medioCobro,
                                 campo::descripcionMedioCobro,
                                 campo::regimenEspecial,
                                 campo::siiCodigo,
                                 campo::siiDescripcion,
                                 campo::siiId,
                                 campo::facturaExtendida,
                                 campo::facturaRectificativa,
                                 campo::periodo};

struct ImporteIva {
    int posicion;
    double ImportesFila::*importe;
};
constexpr std::array<ImporteIva, 7> importesDeIva{{{campo::base, &ImportesFila::base},
                                                   {campo::total, &ImportesFila::total},
                                                   {campo::importeCuota, &ImportesFila::cuota},
                                                   {campo::importeRecargo, &ImportesFila::recargo},
                                                   {campo::cuotaProrrata, &ImportesFila::cuotaProrrata},
                                                   {campo::retencion, &ImportesFila::retencion},
                                                   {campo::liquido, &ImportesFila::liquido}}};

// Rows of one rate of an invoice, be they of the invoice or of its collections.
bool mismaCuota(const FilaIva& fila, const FilaIva& cobro) {
    return fila.texto(campo::tipo) == cobro.texto(campo::tipo) &&
           fila.texto(campo::cuentaIva) == cobro.texto(campo::cuentaIva) &&
           serieDeCobro(fila.texto(campo::srtc)) == cobro.texto(campo::srtc);
}

std::vector<ImportesFila> importesDe(const std::vector<FilaIva>& filas) {
    std::vector<ImportesFila> importes;
    std::ranges::transform(filas, std::back_inserter(importes), &FilaIva::importes);
    return importes;
}

}  // namespace

std::string serieDeCobro(std::string_view serie) {
    constexpr std::string_view facturas = "SRTCFGKL", cobros = "VWXYWVYX";
    const auto lugar = serie.size() == 1 ? facturas.find(serie) : std::string_view::npos;
    return std::string(lugar == std::string_view::npos ? serie : cobros.substr(lugar, 1));
}

FilaIva FilaIva::leer(data::TablaCursor& cursor) {
    FilaIva fila;
    for (const int posicion : textosDeIva)
        fila.poner(posicion, cursor.LeerCampo(posicion));
    for (const ImporteIva& uno : importesDeIva)
        fila.importes.*uno.importe = cursor.LeerNumero(uno.posicion);
    fila.cuota_ = cursor.LeerNumero(campo::cuota);
    fila.recargo_ = cursor.LeerNumero(campo::recargo);
    return fila;
}

void FilaIva::escribir(data::TablaCursor& cursor) const {
    for (const int posicion : textosDeIva)
        cursor.EscribirCampo(posicion, 0, texto(posicion));
    for (const ImporteIva& uno : importesDeIva)
        cursor.EscribirCampo(uno.posicion, 0, importes.*uno.importe);
    cursor.EscribirCampo(campo::cuota, 0, cuota_);
    cursor.EscribirCampo(campo::recargo, 0, recargo_);
}

bool FilaIva::esCobro() const {
    return !data::fechaVacia(texto(campo::fechaCobro));
}

void FilasFactura::anadir(FilasFactura otras) {
    std::ranges::move(otras.factura, std::back_inserter(factura));
    std::ranges::move(otras.cobros, std::back_inserter(cobros));
}

double FilasFactura::totalFactura() const {
    return sumar(importesDe(factura)).liquido;
}

double FilasFactura::totalCobrado() const {
    return sumar(importesDe(cobros)).liquido;
}

// Where several rows of an invoice are alike their collections come by turns, as they were written. What is
// like none counts for the first one, so that nothing is lost from the sum.
std::vector<ImportesFila> FilasFactura::cobradoPorFila() const {
    std::vector<ImportesFila> cobrado(factura.size());
    if (factura.empty()) return cobrado;
    std::vector<std::size_t> veces(factura.size(), 0);
    for (const FilaIva& cobro : cobros) {
        std::size_t suya = 0;
        bool hallada = false;
        for (std::size_t i = 0; i < factura.size(); ++i) {
            if (!mismaCuota(factura[i], cobro) || (hallada && veces[i] >= veces[suya])) continue;
            suya = i;
            hallada = true;
        }
        ++veces[suya];
        cobrado[suya] = sumar({cobrado[suya], cobro.importes});
    }
    return cobrado;
}

FilasFactura LibroFacturas::enVigor(const FacturaPedida& pedida) {
    return leer(data::rutaDeTabla(sesion_.contexto.datos, tablaIva), pedida);
}

FilasFactura LibroFacturas::delAñoAnterior(const FacturaPedida& pedida) {
    const auto ruta = rutaAñoAnterior();
    return ruta ? leer(*ruta, pedida) : FilasFactura{};
}

// The book of that company, whose number stands at the head of its file; nothing when there is no such
// company or it has no book.
std::optional<std::string> LibroFacturas::rutaAñoAnterior() {
    data::CapaDatos& capa = sesion_.contexto.datos;
    std::string empresa = ValoresEmpresa(sesion_).EmpresaAñoAnterior();
    if (empresa.empty()) return std::nullopt;
    if (!core::igualSinCaja(core::SepararRuta(empresa).extension, "QZT")) empresa += ".QZT";
    if (!capa.archivos.estado(empresa)) return std::nullopt;
    data::CabeceraEmpresa cabecera;
    data::exigirEmpresa(capa, empresa,
                        [&](platform::Archivo& archivo) { cabecera = data::CabeceraEmpresa::leer(archivo); });
    std::string libro = core::SepararRuta(empresa).directorio + std::string(tablaIva) +
                        cabecera.texto(data::cabecera::COMUN) + ".QZD";
    if (!capa.archivos.estado(libro)) return std::nullopt;
    return libro;
}

FilasFactura LibroFacturas::leer(const std::string& ruta, const FacturaPedida& pedida) {
    data::TablaCursor cursor(sesion_.contexto.datos, sesion_.contexto.tablas());
    abrirCursor(cursor, ruta);
    std::vector<data::Condicion> condiciones{iguales(columna::tercero, pedida.tercero, ancho::cuenta),
                                             iguales(columna::factura, pedida.factura, ancho::factura)};
    if (!pedida.fecha.empty())
        condiciones.push_back(iguales(columna::fechaFactura, pedida.fecha, ancho::fecha));
    cursor.Filtrar(condiciones);
    FilasFactura filas;
    for (cursor.Primero(); !cursor.FinDeTabla(); cursor.Siguiente()) {
        FilaIva fila = FilaIva::leer(cursor);
        auto& suyas = fila.esCobro() ? filas.cobros : filas.factura;
        suyas.push_back(std::move(fila));
    }
    return filas;
}

}  // namespace tarvoline::link
