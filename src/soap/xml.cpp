#include "soap/xml.h"

#include <charconv>

#include "soap/base64.h"
#include "soap/xml_revision.h"

namespace tarvoline::soap {
namespace {

std::string deLatin1(std::string_view texto) {
    std::string utf8;
    utf8.reserve(texto.size() + texto.size() / 8);
    for (const char c : texto) {
        const auto codigo = static_cast<unsigned char>(c);
        if (codigo < 0x80) {
            utf8 += c;
        } else {
            utf8 += static_cast<char>(0xC0U | (codigo >> 6U));
            utf8 += static_cast<char>(0x80U | (codigo & 0x3FU));
        }
    }
    return utf8;
}

std::string_view sinBlancos(std::string_view texto) {
    const std::size_t primero = texto.find_first_not_of(" \t\r\n");
    if (primero == std::string_view::npos) return {};
    return texto.substr(primero, texto.find_last_not_of(" \t\r\n") - primero + 1);
}

bool esTexto(pugi::xml_node nodo) {
    return nodo.type() == pugi::node_pcdata || nodo.type() == pugi::node_cdata;
}

// The document is walked without recursion, so that its depth costs no stack.
pugi::xml_node siguienteEnOrden(pugi::xml_node nodo, pugi::xml_node tope) {
    if (nodo.first_child()) return nodo.first_child();
    while (nodo != tope && !nodo.next_sibling())
        nodo = nodo.parent();
    return nodo == tope ? pugi::xml_node() : nodo.next_sibling();
}

}  // namespace

DocumentoXml::DocumentoXml(std::string_view xml, std::string_view que) {
    if (xml.starts_with("\xEF\xBB\xBF")) xml.remove_prefix(3);
    if (esLatin1(xml, que)) {
        convertido_ = deLatin1(xml);
        xml = convertido_;
    }
    XmlRevisado revisado = revisarXml(xml, que);
    largos_ = std::move(revisado.largos);
    constexpr unsigned opciones = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol |
                                  pugi::parse_ws_pcdata | pugi::parse_wconv_attribute;
    const auto resultado = documento_.load_buffer(revisado.reducido.data(), revisado.reducido.size(),
                                                  opciones, pugi::encoding_utf8);
    if (!resultado || !raiz()) throw ErrorServicio(std::string(que) + " no es XML válido");
    for (auto otra = raiz().next_sibling(); otra; otra = otra.next_sibling()) {
        if (otra.type() == pugi::node_element) throw ErrorServicio(std::string(que) + " no es XML válido");
    }
}

std::string_view DocumentoXml::trozo(pugi::xml_node texto) const {
    const std::string_view valor = texto.value();
    if (!valor.starts_with(marcaLargo)) return valor;
    std::size_t lugar = 0;
    std::from_chars(valor.data() + 1, valor.data() + valor.size(), lugar);
    return largos_.at(lugar);
}

void DocumentoXml::reunir(pugi::xml_node nodo, std::string& destino) const {
    for (auto n = nodo; n; n = siguienteEnOrden(n, nodo)) {
        if (esTexto(n)) destino += trozo(n);
    }
}

std::string DocumentoXml::texto(pugi::xml_node nodo) const {
    std::string reunido;
    reunir(nodo, reunido);
    exigirTextoXml(reunido);
    return reunido;
}

Bytes DocumentoXml::bytes(pugi::xml_node nodo) const {
    const auto unico = nodo.first_child();
    if (unico && esTexto(unico) && !unico.next_sibling()) return DecodificarBase64(trozo(unico));
    std::string reunido;
    reunir(nodo, reunido);
    return DecodificarBase64(reunido);
}

std::string DocumentoXml::textoCorrido(pugi::xml_node nodo) const {
    std::string reunido;
    for (auto n = nodo; n; n = siguienteEnOrden(n, nodo)) {
        const std::string_view parte = esTexto(n) ? sinBlancos(trozo(n)) : std::string_view{};
        if (!parte.empty() && !reunido.empty()) reunido += ' ';
        reunido += parte;
    }
    exigirTextoXml(reunido);
    return reunido;
}

std::string_view nombreLocal(pugi::xml_node nodo) {
    const std::string_view nombre = nodo.name();
    const std::size_t dosPuntos = nombre.find(':');
    return dosPuntos == std::string_view::npos ? nombre : nombre.substr(dosPuntos + 1);
}

std::string espacioDePrefijo(pugi::xml_node nodo, std::string_view prefijo) {
    if (prefijo == "xml") return "http://www.w3.org/XML/1998/namespace";
    const std::string atributo = prefijo.empty() ? "xmlns" : "xmlns:" + std::string(prefijo);
    for (; nodo; nodo = nodo.parent()) {
        if (const auto declarado = nodo.attribute(atributo.c_str())) return declarado.value();
    }
    return {};
}

std::string espacioDe(pugi::xml_node nodo) {
    return nombreCalificado(nodo, nodo.name()).espacio;
}

NombreXml nombreCalificado(pugi::xml_node nodo, std::string_view valor) {
    valor = sinBlancos(valor);
    const std::size_t dosPuntos = valor.find(':');
    if (dosPuntos == std::string_view::npos) return {espacioDePrefijo(nodo, {}), std::string(valor)};
    return {espacioDePrefijo(nodo, valor.substr(0, dosPuntos)), std::string(valor.substr(dosPuntos + 1))};
}

pugi::xml_node hijo(pugi::xml_node padre, std::string_view nombre) {
    for (auto n = padre.first_child(); n; n = n.next_sibling()) {
        if (n.type() == pugi::node_element && nombreLocal(n) == nombre) return n;
    }
    return {};
}

bool esNulo(pugi::xml_node nodo) {
    for (const auto& atributo : nodo.attributes()) {
        const std::string_view nombre = atributo.name();
        if (nombre.ends_with(":nil")) return atributo.as_bool();
    }
    return false;
}

std::vector<pugi::xml_node> elementos(pugi::xml_node padre) {
    std::vector<pugi::xml_node> hijos;
    for (auto n = padre.first_child(); n; n = n.next_sibling()) {
        if (n.type() == pugi::node_element) hijos.push_back(n);
    }
    return hijos;
}

}  // namespace tarvoline::soap
