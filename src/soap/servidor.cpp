#include "soap/servidor.h"

#include <algorithm>

#include "soap/entero.h"
#include "soap/xml.h"

namespace tarvoline::soap {
namespace {

constexpr std::string_view cabeceraSobre =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>"
    "<soap:Envelope xmlns:soap=\"http://schemas.xmlsoap.org/soap/envelope/\"><soap:Body>";
constexpr std::string_view pieSobre = "</soap:Body></soap:Envelope>";

Valor vacio(TipoValor tipo) {
    switch (tipo) {
        case TipoValor::entero:
            return std::int32_t{0};
        case TipoValor::bytes:
            return Bytes{};
        case TipoValor::texto:
            break;
    }
    return std::string{};
}

Valor leerValor(const DocumentoXml& documento, pugi::xml_node nodo, const Parametro& parametro) {
    if (esNulo(nodo)) return vacio(parametro.tipo);
    switch (parametro.tipo) {
        case TipoValor::bytes:
            return documento.bytes(nodo);
        case TipoValor::entero:
            return leerEntero(documento.texto(nodo), parametro.nombre);
        case TipoValor::texto:
            break;
    }
    return documento.texto(nodo);
}

// The one operation element of the one body.
pugi::xml_node elementoOperacion(pugi::xml_node sobre) {
    if (nombreLocal(sobre) != "Envelope") throw ErrorServicio("la petición no es un sobre SOAP");
    pugi::xml_node cuerpo;
    for (const auto parte : elementos(sobre)) {
        if (nombreLocal(parte) == "Header") {
            for (const auto cabecera : elementos(parte)) {
                for (const auto& atributo : cabecera.attributes()) {
                    if (std::string_view(atributo.name()).ends_with(":mustUnderstand") &&
                        atributo.as_bool()) {
                        throw ErrorServicio("la petición lleva una cabecera que no se entiende");
                    }
                }
            }
        } else if (nombreLocal(parte) == "Body") {
            if (cuerpo) throw ErrorServicio("la petición tiene más de un cuerpo");
            cuerpo = parte;
        }
    }
    const auto llamadas = elementos(cuerpo);
    if (llamadas.size() != 1) throw ErrorServicio("la petición no tiene exactamente una operación");
    return llamadas.front();
}

void abrir(std::string& xml, std::string_view nombre, std::string_view espacio = {}) {
    xml += '<';
    xml += nombre;
    if (!espacio.empty()) {
        xml += " xmlns=\"";
        escaparXml(espacio, xml, Impropio::sustituir);
        xml += '"';
    }
    xml += '>';
}

void cerrar(std::string& xml, std::string_view nombre) {
    xml += "</";
    xml += nombre;
    xml += '>';
}

}  // namespace

const OperacionContrato* Contrato::operacion(std::string_view nombre) const {
    const auto donde = std::find_if(operaciones.begin(), operaciones.end(),
                                    [&](const OperacionContrato& o) { return o.nombre == nombre; });
    return donde == operaciones.end() ? nullptr : &*donde;
}

PeticionSoap LeerPeticion(const Contrato& contrato, std::string_view xml) {
    const DocumentoXml documento(xml, "la petición");
    const auto llamada = elementoOperacion(documento.raiz());
    PeticionSoap peticion;
    peticion.operacion = contrato.operacion(nombreLocal(llamada));
    if (peticion.operacion == nullptr) throw ErrorServicio("la operación pedida no existe");
    const auto& parametros = peticion.operacion->parametros;
    for (const auto& parametro : parametros)
        peticion.argumentos.push_back(vacio(parametro.tipo));
    std::vector<bool> leido(parametros.size());
    for (const auto elemento : elementos(llamada)) {
        const std::string_view nombre = nombreLocal(elemento);
        const auto cual = std::find_if(parametros.begin(), parametros.end(),
                                       [&](const Parametro& p) { return p.nombre == nombre; });
        if (cual == parametros.end()) continue;
        const auto lugar = static_cast<std::size_t>(cual - parametros.begin());
        if (leido[lugar]) throw ErrorServicio("el parámetro " + cual->nombre + " viene repetido");
        leido[lugar] = true;
        peticion.argumentos[lugar] = leerValor(documento, elemento, *cual);
    }
    return peticion;
}

std::string EscribirRespuesta(const Contrato& contrato, const PeticionSoap& peticion,
                              std::string_view resultado) {
    const OperacionContrato& operacion = *peticion.operacion;
    std::string xml;
    xml.reserve(1024 + resultado.size() + resultado.size() / 8 + espacioDeValores(peticion.argumentos));
    xml += cabeceraSobre;
    abrir(xml, operacion.nombre + "Response", contrato.espacioNombres);
    abrir(xml, operacion.nombre + "Result");
    escaparXml(resultado, xml, Impropio::sustituir);
    cerrar(xml, operacion.nombre + "Result");
    for (std::size_t i = 0; i < operacion.parametros.size(); ++i) {
        const Parametro& parametro = operacion.parametros[i];
        if (!parametro.porReferencia) continue;
        abrir(xml, parametro.nombre);
        escribirValor(xml, peticion.argumentos.at(i), Impropio::sustituir);
        cerrar(xml, parametro.nombre);
    }
    cerrar(xml, operacion.nombre + "Response");
    xml += pieSobre;
    return xml;
}

std::string EscribirFallo(std::string_view codigo, std::string_view texto, std::string_view detalle) {
    std::string xml(cabeceraSobre);
    xml += "<soap:Fault><faultcode>soap:";
    escaparXml(codigo, xml, Impropio::sustituir);
    xml += "</faultcode><faultstring>";
    escaparXml(texto, xml, Impropio::sustituir);
    xml += "</faultstring><detail>";
    escaparXml(detalle, xml, Impropio::sustituir);
    xml += "</detail></soap:Fault>";
    xml += pieSobre;
    return xml;
}

}  // namespace tarvoline::soap
