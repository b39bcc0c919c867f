#include "link/remoto/lector_asientos.h"

#include <pugixml.hpp>

#include "core/texto.h"
#include "data/fechas.h"
#include "link/fechas_enlace.h"
#include "link/importe_texto.h"

namespace tarvoline::link::remoto {

namespace {

std::string atributo(pugi::xml_node fila, const char* nombre) {
    return fila.attribute(nombre).value();
}

double importe(pugi::xml_node fila, const char* nombre) {
    return importeDeTexto(atributo(fila, nombre));
}

std::string_view nombreBase(pugi::xml_node nodo) {
    const std::string_view nombre = nodo.name();
    const auto prefijo = nombre.find(':');
    return prefijo == std::string_view::npos ? nombre : nombre.substr(prefijo + 1);
}

ApunteClass apunteDe(pugi::xml_node fila) {
    ApunteClass linea;
    linea.Cuenta = atributo(fila, "CUENTA");
    linea.Descripción = atributo(fila, "DESCRIPCION");
    linea.TIPO = core::ValEntero(atributo(fila, "TIPO"));
    linea.Importe = importe(fila, "IMPORTE");
    linea.Diario = atributo(fila, "DIARIO");
    linea.Canal = atributo(fila, "CANAL");
    linea.Referencia = atributo(fila, "REFERENCIA");
    linea.NOTAS = atributo(fila, "NOTAS");
    return linea;
}

IVAClass ivaDe(const Sesion& sesion, pugi::xml_node fila) {
    IVAClass linea;
    linea.CuentaClienteProveedor = atributo(fila, "CUENTA");
    linea.CuentaIVA = atributo(fila, "CTA_IVA");
    linea.Factura = atributo(fila, "FACTURA");
    linea.FechaFactura = fechaDeRespuesta(sesion, atributo(fila, "FECHA_FRA"));
    linea.TipoIva = atributo(fila, "TIPO");
    linea.SRTC = atributo(fila, "SRTC");
    linea.Base = importe(fila, "BASE");
    linea.TOTAL = importe(fila, "TOTAL");
    linea.titulo = atributo(fila, "TITULO");
    linea.NIF = atributo(fila, "NIF");
    linea.NumeroOrden = atributo(fila, "ORDEN");
    return linea;
}

CarteraClass carteraDe(const Sesion& sesion, pugi::xml_node fila) {
    CarteraClass linea;
    linea.FechaVencimiento = fechaDeRespuesta(sesion, atributo(fila, "FECHA_VTO"));
    linea.Cuenta = atributo(fila, "CUENTA");
    linea.cartera = atributo(fila, "CA");
    linea.NOTAS = atributo(fila, "NOTAS");
    linea.Importe = importe(fila, fila.attribute("TOTAL") ? "TOTAL" : "IMPORTE");
    return linea;
}

AnaliticaClass analiticaDe(pugi::xml_node fila) {
    return {atributo(fila, "CUENTA"), atributo(fila, "CODANALI"), atributo(fila, "DESCRIPCION"),
            importe(fila, "IMPORTE")};
}

void leerSeccion(const Sesion& sesion, pugi::xml_node seccion, Pendientes& lineas) {
    const std::string_view nombre = nombreBase(seccion);
    for (const pugi::xml_node fila : seccion.children()) {
        if (fila.type() != pugi::node_element) continue;
        if (nombre == "APUNTES") lineas.anadir(apunteDe(fila));
        if (nombre == "APUNTESIVA") lineas.anadir(ivaDe(sesion, fila));
        if (nombre == "APUNTESCARTERA") lineas.anadir(carteraDe(sesion, fila));
        if (nombre == "APUNTESANALI") lineas.anadir(analiticaDe(fila));
    }
}

[[noreturn]] void noEsRespuesta(const std::string& motivo) {
    throw ErrorEnlace(error_enlace::noDisponible, "La respuesta del servicio no se entiende: " + motivo);
}

}  // namespace

std::string fechaDeRespuesta(const Sesion& sesion, std::string_view fecha) {
    constexpr std::size_t guardada = 6, corta = 8, larga = 10;
    const std::string limpia = core::Recortar(fecha);
    if (limpia.size() == guardada) return fechaCorta(sesion, limpia);
    if (limpia.size() != corta && limpia.size() != larga) return {};
    return fechaCorta(sesion, fechaSinComprobar(sesion, limpia));
}

AsientoLeido leerAsiento(const Sesion& sesion, std::string_view respuesta) {
    AsientoLeido leido;
    if (core::Recortar(respuesta).empty()) return leido;
    pugi::xml_document documento;
    const auto resultado =
        documento.load_buffer(respuesta.data(), respuesta.size(),
                              pugi::parse_default | pugi::parse_trim_pcdata, pugi::encoding_utf8);
    if (!resultado) noEsRespuesta(resultado.description());
    for (const pugi::xml_node grupo : documento.document_element().children()) {
        const pugi::xml_node asiento = grupo.first_child();
        if (!asiento) continue;
        if (nombreBase(asiento) != "ASIENTO") noEsRespuesta("<" + std::string(asiento.name()) + ">");
        leido.hay = true;
        leido.numero = atributo(asiento, "NUMERO");
        leido.fecha = fechaDeTexto(sesion, atributo(asiento, "FECHA"));
        for (const pugi::xml_node seccion : asiento.children())
            leerSeccion(sesion, seccion, leido.lineas);
    }
    return leido;
}

}  // namespace tarvoline::link::remoto
