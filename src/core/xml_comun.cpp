#include "core/xml_comun.h"

#include <optional>
#include <pugixml.hpp>

#include "core/entorno.h"
#include "core/texto.h"

namespace tarvoline::core {
namespace {

enum class Codificacion { porMarca, utf8, latin1, ansi };

// The value of `encoding` in the XML declaration, "" when there is none.
std::string codificacionDeclarada(std::string_view contenido) {
    if (!empiezaPor(contenido, "<?xml")) {
        return {};
    }
    const std::string_view declaracion = contenido.substr(0, contenido.find("?>"));
    const auto nombre = declaracion.find("encoding");
    const auto comilla =
        declaracion.find_first_of("\"'", nombre == std::string_view::npos ? declaracion.size() : nombre);
    if (comilla == std::string_view::npos) {
        return {};
    }
    const auto cierre = declaracion.find(declaracion[comilla], comilla + 1);
    return Minusculas(declaracion.substr(comilla + 1, cierre - comilla - 1));
}

// The file's own programs write Windows-1252 without saying so; one that says otherwise is believed.
Codificacion codificacionDe(std::string_view contenido) {
    const bool marca = empiezaPor(contenido, "\xEF\xBB\xBF") || empiezaPor(contenido, "\xFF\xFE") ||
                       empiezaPor(contenido, "\xFE\xFF");
    const std::string declarada = codificacionDeclarada(contenido);
    if (marca) {
        return Codificacion::porMarca;
    }
    if (declarada == "utf-8") {
        return Codificacion::utf8;
    }
    return declarada == "iso-8859-1" ? Codificacion::latin1 : Codificacion::ansi;
}

bool cargar(pugi::xml_document& documento, const std::string& contenido) {
    const auto leer = [&](const std::string& texto, pugi::xml_encoding codificacion) {
        return static_cast<bool>(
            documento.load_buffer(texto.data(), texto.size(), pugi::parse_default, codificacion));
    };
    switch (codificacionDe(contenido)) {
        case Codificacion::porMarca:
            return leer(contenido, pugi::encoding_auto);
        case Codificacion::utf8:
            return leer(contenido, pugi::encoding_utf8);
        case Codificacion::latin1:
            return leer(contenido, pugi::encoding_latin1);
        case Codificacion::ansi:
            break;
    }
    return leer(aUtf8(std::string_view(contenido)), pugi::encoding_utf8);
}

// The second attribute of the root's first child with that key, in document order.
std::string buscar(const pugi::xml_document& documento, const std::string& clave) {
    for (const pugi::xml_node& hijo : documento.document_element().children()) {
        if (hijo.type() == pugi::node_element && hijo.attribute("Key").value() == clave &&
            hijo.attribute("Key")) {
            return hijo.first_attribute().next_attribute().value();
        }
    }
    return {};
}

}  // namespace

std::string LeerClaveXML(Entorno& entorno, std::string_view clave, std::string_view defecto,
                         std::string_view empresa, std::string_view archivo) {
    const std::string codigo(empresa.empty() ? std::string_view(entorno.estado.gEmpresaCRM) : empresa);
    if (codigo.empty()) {
        return std::string(defecto);
    }
    const std::string ruta =
        archivo.empty() ? entorno.estado.gDatosDir + "Total" + codigo + ".xml" : std::string(archivo);
    std::string valor;
    ignorandoErrores(entorno, "LeerClaveXML", [&] {
        if (!platform::existe(entorno.archivos, ruta)) {
            return;  // a company that was never set up: no news for the log
        }
        pugi::xml_document documento;
        const std::string contenido = platform::leerTodo(entorno.archivos, ruta);
        if (!contenido.empty() && cargar(documento, contenido)) {
            valor = buscar(documento, Mayusculas(clave));
        }
    });
    return valor.empty() ? std::string(defecto) : valor;
}

std::vector<std::string> LeerListaXML(std::string_view utf8) {
    pugi::xml_document documento;
    const auto leido =
        documento.load_buffer(utf8.data(), utf8.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!leido) {
        throw ErrorXml(leido.description());
    }
    std::vector<std::string> textos;
    for (const pugi::xml_node& hijo : documento.document_element().children()) {
        if (std::string texto = hijo.text().get(); !texto.empty()) {
            textos.push_back(std::move(texto));
        }
    }
    return textos;
}

}  // namespace tarvoline::core
