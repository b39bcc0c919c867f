#include "tools/diferencia_vista.h"

#include <functional>
#include <map>
#include <span>
#include <utility>

#include "data/codec.h"

namespace tarvoline::tools {

namespace {

using link::AnaliticaClass;
using link::ApunteClass;
using link::CarteraClass;
using link::DatosClass;
using link::ExtractoClass;
using link::IVAClass;
using link::PlanClass;
using link::TipoIvaClass;

template <typename Clase>
using Campo = std::pair<const char*, std::function<std::string(const Clase&)>>;

std::string valorDe(const std::string& texto) {
    return texto;
}
std::string valorDe(double numero) {
    return comoTexto(numero);
}
std::string valorDe(int numero) {
    return std::to_string(numero);
}
std::string valorDe(bool marca) {
    return marca ? "1" : "0";
}

template <typename Clase, typename Valor>
Campo<Clase> campo(const char* nombre, Valor Clase::*miembro) {
    return {nombre, [miembro](const Clase& uno) { return valorDe(uno.*miembro); }};
}

template <typename Clase>
std::vector<Campo<Clase>> camposDe();

// The number of the record is the file's own affair.
template <>
std::vector<Campo<ApunteClass>> camposDe() {
    return {campo("Cuenta", &ApunteClass::Cuenta), campo("Descripción", &ApunteClass::Descripción),
            campo("TIPO", &ApunteClass::TIPO),     campo("Importe", &ApunteClass::Importe),
            campo("Diario", &ApunteClass::Diario), campo("Punteo", &ApunteClass::Punteo),
            campo("Canal", &ApunteClass::Canal),   campo("Referencia", &ApunteClass::Referencia),
            campo("NOTAS", &ApunteClass::NOTAS)};
}

template <>
std::vector<Campo<AnaliticaClass>> camposDe() {
    return {campo("CuentaContable", &AnaliticaClass::CuentaContable),
            campo("CuentaAnalitica", &AnaliticaClass::CuentaAnalitica),
            campo("Descripción", &AnaliticaClass::Descripción), campo("Importe", &AnaliticaClass::Importe)};
}

template <>
std::vector<Campo<CarteraClass>> camposDe() {
    return {campo("FechaVencimiento", &CarteraClass::FechaVencimiento),
            campo("Cuenta", &CarteraClass::Cuenta),
            campo("cartera", &CarteraClass::cartera),
            campo("NOTAS", &CarteraClass::NOTAS),
            campo("Importe", &CarteraClass::Importe),
            campo("Marca", &CarteraClass::Marca),
            campo("Fecha", &CarteraClass::Fecha),
            campo("Asiento", &CarteraClass::Asiento)};
}

template <>
std::vector<Campo<IVAClass>> camposDe() {
    return {campo("CuentaClienteProveedor", &IVAClass::CuentaClienteProveedor),
            campo("CuentaIVA", &IVAClass::CuentaIVA),
            campo("Factura", &IVAClass::Factura),
            campo("FechaFactura", &IVAClass::FechaFactura),
            campo("TipoIva", &IVAClass::TipoIva),
            campo("SRTC", &IVAClass::SRTC),
            campo("Base", &IVAClass::Base),
            campo("TOTAL", &IVAClass::TOTAL),
            campo("Prorata", &IVAClass::Prorata),
            campo("titulo", &IVAClass::titulo),
            campo("NIF", &IVAClass::NIF),
            campo("NumeroOrden", &IVAClass::NumeroOrden),
            campo("Referencia", &IVAClass::Referencia),
            campo("CuotaProrrata", &IVAClass::CuotaProrrata),
            campo("SerieFacturas", &IVAClass::SerieFacturas),
            campo("CLAVEOPERACION", &IVAClass::CLAVEOPERACION),
            campo("FechaCobro", &IVAClass::FechaCobro),
            campo("MedioCobro", &IVAClass::MedioCobro),
            campo("DescripcionMedioCobro", &IVAClass::DescripcionMedioCobro),
            campo("PorcRetencion", &IVAClass::PorcRetencion),
            campo("RegimenEspecial", &IVAClass::RegimenEspecial),
            campo("Liquido", &IVAClass::Liquido),
            campo("SII_Codigo", &IVAClass::SII_Codigo),
            campo("SII_DescripcionDocumento", &IVAClass::SII_DescripcionDocumento),
            campo("SII_Id", &IVAClass::SII_Id),
            campo("SII_FacturaExtendida", &IVAClass::SII_FacturaExtendida),
            campo("SII_FacturaRectificativa_DUA", &IVAClass::SII_FacturaRectificativa_DUA),
            campo("SII_PeriodoPresentacion", &IVAClass::SII_PeriodoPresentacion)};
}

template <>
std::vector<Campo<ExtractoClass>> camposDe() {
    return {campo("Cuenta", &ExtractoClass::Cuenta),
            campo("Fecha", &ExtractoClass::Fecha),
            campo("Asiento", &ExtractoClass::Asiento),
            campo("Descripción", &ExtractoClass::Descripción),
            campo("TIPO", &ExtractoClass::TIPO),
            campo("Importe", &ExtractoClass::Importe),
            campo("Diario", &ExtractoClass::Diario),
            campo("Punteo", &ExtractoClass::Punteo),
            campo("Canal", &ExtractoClass::Canal),
            campo("Referencia", &ExtractoClass::Referencia),
            campo("Moneda", &ExtractoClass::Moneda),
            campo("CambioMoneda", &ExtractoClass::CambioMoneda),
            campo("ValorEnMoneda", &ExtractoClass::ValorEnMoneda),
            campo("Usuario", &ExtractoClass::Usuario),
            campo("FechaGrabacion", &ExtractoClass::FechaGrabacion),
            campo("Debe", &ExtractoClass::Debe),
            campo("Haber", &ExtractoClass::Haber),
            campo("Saldo", &ExtractoClass::Saldo)};
}

template <>
std::vector<Campo<PlanClass>> camposDe() {
    std::vector<Campo<PlanClass>> campos{campo("Cuenta", &PlanClass::Cuenta),
                                         campo("titulo", &PlanClass::titulo),
                                         campo("Nivel", &PlanClass::Nivel),
                                         campo("EsAnalitica", &PlanClass::EsAnalitica),
                                         campo("NIF", &PlanClass::NIF),
                                         campo("NOTAS", &PlanClass::NOTAS),
                                         campo("OMITIR347", &PlanClass::OMITIR347),
                                         campo("OMITIR415", &PlanClass::OMITIR415),
                                         campo("Clave347", &PlanClass::Clave347),
                                         campo("CriterioCaja", &PlanClass::CriterioCaja)};
    campos.emplace_back("periodos", [](const PlanClass& plan) {
        std::string todos;
        for (std::size_t i = 0; i < link::periodosPlan; ++i)
            todos += comoTexto(plan.coldebe[i].Importe) + " " + comoTexto(plan.colhaber[i].Importe) + " ";
        return todos;
    });
    return campos;
}

template <>
std::vector<Campo<DatosClass>> camposDe() {
    return {campo("Cuenta", &DatosClass::Cuenta),
            campo("titulo", &DatosClass::titulo),
            campo("NIF", &DatosClass::NIF),
            campo("Direccion", &DatosClass::Direccion),
            campo("cp", &DatosClass::cp),
            campo("Municipio", &DatosClass::Municipio),
            campo("Provincia", &DatosClass::Provincia),
            campo("CVP", &DatosClass::CVP),
            campo("Importe_347", &DatosClass::Importe_347),
            campo("Telefono", &DatosClass::Telefono),
            campo("Fax", &DatosClass::Fax),
            campo("Riesgo", &DatosClass::Riesgo),
            campo("TipoIva", &DatosClass::TipoIva),
            campo("NOTAS", &DatosClass::NOTAS),
            campo("Vencimientos", &DatosClass::Vencimientos),
            campo("DiasDePago", &DatosClass::DiasDePago),
            campo("email", &DatosClass::email),
            campo("PaginaWeb", &DatosClass::PaginaWeb),
            campo("Pais", &DatosClass::Pais),
            campo("EsCriterioCaja", &DatosClass::EsCriterioCaja),
            campo("OMITIR347", &DatosClass::OMITIR347),
            campo("OMITIR415", &DatosClass::OMITIR415),
            campo("Trimestre1_347", &DatosClass::Trimestre1_347),
            campo("Trimestre2_347", &DatosClass::Trimestre2_347),
            campo("Trimestre3_347", &DatosClass::Trimestre3_347),
            campo("Trimestre4_347", &DatosClass::Trimestre4_347)};
}

template <>
std::vector<Campo<TipoIvaClass>> camposDe() {
    return {campo("TIPO", &TipoIvaClass::TIPO),         campo("Descripción", &TipoIvaClass::Descripción),
            campo("ClaveOp2", &TipoIvaClass::ClaveOp2), campo("ClaveOp", &TipoIvaClass::ClaveOp),
            campo("Cuota", &TipoIvaClass::Cuota),       campo("Recargo", &TipoIvaClass::Recargo)};
}

template <typename Clase>
void anadirItem(Vista& vista, const char* coleccion, int lugar, const Clase& item) {
    static const std::vector<Campo<Clase>> campos = camposDe<Clase>();
    for (const auto& [nombre, leer] : campos)
        vista.push_back({coleccion, lugar, nombre, leer(item)});
}

template <typename Item>
void anadirItems(Vista& vista, const char* coleccion, const link::Enlace& enlace, std::int32_t cuantos,
                 Item item) {
    for (std::int32_t i = 1; i <= cuantos; ++i)
        anadirItem(vista, coleccion, i, *(enlace.*item)(i));
}

using Sitio = std::pair<std::string, int>;  // collection and place

std::map<Sitio, std::map<std::string, std::string>> porSitio(const Vista& vista) {
    std::map<Sitio, std::map<std::string, std::string>> sitios;
    for (const Dato& dato : vista)
        sitios[{dato.coleccion, dato.lugar}][dato.campo] = dato.valor;
    return sitios;
}

}  // namespace

std::string comoTexto(double numero) {
    std::string texto;
    data::ponerTextoDeNumero(numero, texto);
    return texto;
}

void anadirMuestra(Vista& vista, const link::Enlace& enlace, Muestra muestra) {
    using link::Enlace;
    switch (muestra) {
        case Muestra::nada:
            break;
        case Muestra::asiento:
            vista.push_back({"asiento", 0, "Fecha", enlace.Fecha()});
            vista.push_back({"asiento", 0, "Número", enlace.Número()});
            anadirItems(vista, "apunte", enlace, enlace.ContadorApuntes(), &Enlace::Apunte);
            anadirItems(vista, "iva", enlace, enlace.ContadorIva(), &Enlace::iva);
            anadirItems(vista, "cartera", enlace, enlace.ContadorCartera(), &Enlace::cartera);
            anadirItems(vista, "analítica", enlace, enlace.ContadorAnalitica(), &Enlace::Analitica);
            break;
        case Muestra::extracto:
            anadirItems(vista, "extracto", enlace, enlace.ContadorExtracto(), &Enlace::Extracto);
            break;
        case Muestra::plan:
            anadirItems(vista, "plan", enlace, enlace.ContadorPlan(), &Enlace::Plan);
            break;
        case Muestra::datos:
            anadirItems(vista, "datos", enlace, enlace.ContadorDatos(), &Enlace::DATOS);
            break;
    }
}

void anadirCartera(Vista& vista, const link::CarteraLeida& lineas) {
    int lugar = 0;
    for (const auto& linea : lineas)
        anadirItem(vista, "efecto", ++lugar, *linea);
}

void anadirTipo(Vista& vista, const TipoIvaClass& tipo) {
    anadirItem(vista, "tipo", 0, tipo);
}

std::vector<Diferencia> comparar(const Vista& una, const Vista& otra) {
    std::vector<Diferencia> diferencias;
    const auto unas = porSitio(una), otras = porSitio(otra);
    std::map<Sitio, bool> dichos;
    for (const Dato& dato : una) {
        const Sitio sitio{dato.coleccion, dato.lugar};
        const auto suyo = otras.find(sitio);
        if (suyo == otras.end()) {
            if (!std::exchange(dichos[sitio], true))
                diferencias.push_back({{dato.coleccion, dato.lugar, "", "(está)"}, "(falta)", true});
            continue;
        }
        const auto campo = suyo->second.find(dato.campo);
        const std::string valor = campo == suyo->second.end() ? "(falta)" : campo->second;
        if (valor != dato.valor) diferencias.push_back({dato, valor});
    }
    for (const auto& [sitio, campos] : otras) {
        const auto suyo = unas.find(sitio);
        if (suyo == unas.end()) {
            diferencias.push_back({{sitio.first, sitio.second, "", "(falta)"}, "(está)", true});
            continue;
        }
        // An error that only the other road has, for one.
        for (const auto& [campo, valor] : campos) {
            if (!suyo->second.contains(campo))
                diferencias.push_back({{sitio.first, sitio.second, campo, "(falta)"}, valor});
        }
    }
    return diferencias;
}

}  // namespace tarvoline::tools
