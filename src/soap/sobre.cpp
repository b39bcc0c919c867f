#include "soap/sobre.h"

#include <algorithm>

#include "soap/entero.h"
#include "soap/xml.h"

namespace tarvoline::soap {
namespace {

constexpr std::string_view abreSobre =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>"
    "<soap:Envelope xmlns:soap=\"http://schemas.xmlsoap.org/soap/envelope/\""
    " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xmlns:xsd=\"http://www.w3.org/2001/XMLSchema\">"
    "<soap:Body>";
constexpr std::string_view cierraSobre = "</soap:Body></soap:Envelope>";

// The wrapper has its namespace under the prefix "m", and a part of the same namespace too. Everything else
// declares its own.
void escribirNombre(std::string& xml, const OperacionWsdl& operacion, const ParteWsdl& parte) {
    if (!parte.espacio.empty() && parte.espacio == operacion.espacioEnvoltura) xml += "m:";
    xml += parte.nombre;
}

void escribirAtributos(std::string& xml, const OperacionWsdl& operacion, const ParteWsdl& parte) {
    if (!parte.espacio.empty() && parte.espacio != operacion.espacioEnvoltura) {
        xml += " xmlns=\"";
        escaparXml(parte.espacio, xml, Impropio::rechazar);
        xml += '"';
    }
    if (operacion.codificada && !parte.tipo.empty()) {
        xml += " xsi:type=\"xsd:";
        xml += parte.tipo;
        xml += '"';
    }
}

void escribirEnvoltura(std::string& xml, const OperacionWsdl& operacion) {
    xml += operacion.espacioEnvoltura.empty() ? "" : "m:";
    xml += operacion.envoltura;
}

// The first element of the body.
pugi::xml_node elementoRespuesta(const DocumentoXml& documento) {
    if (nombreLocal(documento.raiz()) != "Envelope") {
        throw ErrorServicio("la respuesta del servicio no es un sobre SOAP");
    }
    const auto respuesta = elementos(hijo(documento.raiz(), "Body"));
    if (respuesta.empty()) throw ErrorServicio("la respuesta del servicio no tiene contenido");
    return respuesta.front();
}

std::optional<ErrorServicio> falloDe(const DocumentoXml& documento, pugi::xml_node respuesta) {
    if (nombreLocal(respuesta) != "Fault") return std::nullopt;
    // SOAP 1.2 tells the same under other names.
    auto texto = hijo(respuesta, "faultstring");
    if (!texto) texto = hijo(hijo(respuesta, "Reason"), "Text");
    auto detalle = hijo(respuesta, "detail");
    if (!detalle) detalle = hijo(respuesta, "Detail");
    const std::string descripcion = documento.textoCorrido(texto);
    return ErrorServicio(descripcion.empty() ? "el servicio comunica un fallo" : descripcion,
                         documento.textoCorrido(detalle));
}

void escribirDeVuelta(const DocumentoXml& documento, pugi::xml_node parte, Valor& argumento) {
    if (std::holds_alternative<Bytes>(argumento)) {
        argumento = documento.bytes(parte);
    } else if (std::holds_alternative<std::int32_t>(argumento)) {
        argumento = esNulo(parte) ? 0 : leerEntero(documento.texto(parte), nombreLocal(parte));
    } else {
        argumento = documento.texto(parte);
    }
}

}  // namespace

void EscribirLlamada(const OperacionWsdl& operacion, std::span<const Valor> argumentos,
                     std::string& destino) {
    if (!operacion.motivo.empty()) {
        throw ErrorServicio("la operación " + operacion.nombre + " no se puede usar: " + operacion.motivo);
    }
    if (argumentos.size() != operacion.entrada.size()) {
        throw ErrorServicio("la operación " + operacion.nombre + " espera " +
                            std::to_string(operacion.entrada.size()) + " argumentos");
    }
    destino.clear();
    destino.reserve(2048 + espacioDeValores(argumentos));
    destino += abreSobre;
    destino += '<';
    escribirEnvoltura(destino, operacion);
    if (!operacion.espacioEnvoltura.empty()) {
        destino += " xmlns:m=\"";
        escaparXml(operacion.espacioEnvoltura, destino, Impropio::rechazar);
        destino += '"';
    }
    if (operacion.codificada) {
        destino += " soap:encodingStyle=\"http://schemas.xmlsoap.org/soap/encoding/\"";
    }
    destino += '>';
    for (std::size_t i = 0; i < argumentos.size(); ++i) {
        destino += '<';
        escribirNombre(destino, operacion, operacion.entrada[i]);
        escribirAtributos(destino, operacion, operacion.entrada[i]);
        destino += '>';
        escribirValor(destino, argumentos[i], Impropio::rechazar);
        destino += "</";
        escribirNombre(destino, operacion, operacion.entrada[i]);
        destino += '>';
    }
    destino += "</";
    escribirEnvoltura(destino, operacion);
    destino += '>';
    destino += cierraSobre;
}

std::string LeerRespuesta(const OperacionWsdl& operacion, std::string_view xml, std::span<Valor> argumentos) {
    const DocumentoXml documento(xml, "la respuesta del servicio");
    const auto respuesta = elementoRespuesta(documento);
    if (const auto fallo = falloDe(documento, respuesta)) throw ErrorServicio(*fallo);
    if (!operacion.envolturaRespuesta.empty() && nombreLocal(respuesta) != operacion.envolturaRespuesta) {
        throw ErrorServicio("la respuesta del servicio es de otra operación");
    }
    std::string resultado;
    bool hayResultado = false;
    for (const auto parte : elementos(respuesta)) {
        const auto parametro =
            std::find_if(operacion.entrada.begin(), operacion.entrada.end(),
                         [&](const ParteWsdl& p) { return p.nombre == nombreLocal(parte); });
        if (parametro != operacion.entrada.end()) {
            const auto lugar = static_cast<std::size_t>(parametro - operacion.entrada.begin());
            if (lugar < argumentos.size()) escribirDeVuelta(documento, parte, argumentos[lugar]);
        } else if (!hayResultado) {
            resultado = documento.texto(parte);
            hayResultado = true;
        }
    }
    return resultado;
}

std::optional<ErrorServicio> LeerFallo(std::string_view xml) {
    try {
        const DocumentoXml documento(xml, "la respuesta del servicio");
        return falloDe(documento, elementoRespuesta(documento));
    } catch (const ErrorServicio&) {
        return std::nullopt;  // no envelope: the HTTP status is all that is known
    }
}

}  // namespace tarvoline::soap
