#include "server/enlace_forma.h"

#include <algorithm>
#include <pugixml.hpp>

#include "core/texto.h"

namespace tarvoline::server {

namespace {

constexpr std::size_t maximoBytes = std::size_t{1024} * 1024;
constexpr std::size_t maximoCampos = 32;
constexpr int maximoNiveles = 8;

bool nombreBueno(std::string_view nombre) {
    constexpr std::size_t maximo = 40;
    return !nombre.empty() && nombre.size() <= maximo && std::ranges::all_of(nombre, [](unsigned char c) {
        return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    });
}

// Documents are walked without recursion; one that is nested deeper than any form is none.
void comprobar(const pugi::xml_document& documento) {
    struct Recorrido : pugi::xml_tree_walker {
        bool for_each(pugi::xml_node& nodo) override {
            if (nodo.type() == pugi::node_doctype) throw ErrorForma("ERROR: DOCTYPE");
            if (depth() > maximoNiveles) throw ErrorForma("ERROR: XML demasiado profundo");
            return true;
        }
    } recorrido;
    pugi::xml_node(documento).traverse(recorrido);
}

// All of it, also what a comment parts.
std::string textoDe(const pugi::xml_node& elemento) {
    std::string texto;
    for (const pugi::xml_node trozo : elemento.children()) {
        if (trozo.type() == pugi::node_pcdata || trozo.type() == pugi::node_cdata) texto += trozo.value();
    }
    return texto;
}

}  // namespace

std::string textoDeForma(std::string_view utf8) {
    constexpr unsigned char primero = 0xC2, desde = 0x80, hasta = 0x9F;
    std::string texto;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        const auto d = i + 1 < utf8.size() ? static_cast<unsigned char>(utf8[i + 1]) : 0U;
        if (c == primero && d >= desde && d <= hasta) {
            texto += core::aUtf8(utf8.substr(i + 1, 1));
            ++i;
        } else {
            texto += utf8[i];
        }
    }
    return texto;
}

const std::string& FormaEnlace::campo(std::string_view nombre) const {
    static const std::string nada;
    const auto suyo = campos.find(nombre);
    return suyo == campos.end() ? nada : suyo->second;
}

FormaEnlace leerForma(std::string_view xml) {
    if (xml.size() > maximoBytes) throw ErrorForma("ERROR: la petición es demasiado grande");
    FormaEnlace forma;
    forma.documento = std::make_shared<pugi::xml_document>();
    const auto leida = forma.documento->load_buffer(
        xml.data(), xml.size(), pugi::parse_default | pugi::parse_doctype, pugi::encoding_utf8);
    if (!leida) throw ErrorForma(std::string("ERROR: no es XML: ") + leida.description());
    comprobar(*forma.documento);
    const pugi::xml_node raiz = forma.documento->document_element();
    forma.operacion = raiz.name();
    for (const pugi::xml_node hijo : raiz.children()) {
        if (hijo.type() != pugi::node_element) continue;
        const std::string nombre = hijo.name();
        if (!nombreBueno(nombre) || forma.campos.size() >= maximoCampos)
            throw ErrorForma("ERROR: campo que no se entiende");
        if (!forma.campos.emplace(nombre, textoDeForma(textoDe(hijo))).second)
            throw ErrorForma("ERROR: el campo " + nombre + " está dos veces");
    }
    forma.token = forma.campo("ID");
    forma.carpeta = forma.campo("CARPETA");
    forma.empresa = forma.campo("EMPRESA");
    return forma;
}

}  // namespace tarvoline::server
