#include "soap/esquema.h"

namespace tarvoline::soap {
namespace {

constexpr std::string_view xsd = "http://www.w3.org/2001/XMLSchema";
constexpr int nivelMaximo = 32;  // types that extend or restrict each other in a circle end here

}  // namespace

Esquemas::Esquemas(pugi::xml_node tipos) {
    for (const auto esquema : elementos(tipos)) {
        if (nombreLocal(esquema) != "schema") continue;
        const std::string espacio = esquema.attribute("targetNamespace").value();
        for (const auto nodo : elementos(esquema)) {
            const NombreXml nombre{espacio, nodo.attribute("name").value()};
            const std::string_view clase = nombreLocal(nodo);
            if (clase == "element") elementos_.try_emplace(nombre, Global{nodo, esquema});
            if (clase == "complexType" || clase == "simpleType") {
                tipos_.try_emplace(nombre, Global{nodo, esquema});
            }
        }
    }
}

std::optional<std::vector<ParteWsdl>> Esquemas::hijosDe(const NombreXml& elemento) const {
    const auto donde = elementos_.find(elemento);
    if (donde == elementos_.end()) return std::nullopt;
    const auto& [nodo, esquema] = donde->second;
    std::vector<ParteWsdl> partes;
    if (const auto tipo = nodo.attribute("type")) {
        if (!reunirTipoNombrado(nombreCalificado(nodo, tipo.value()), partes, 0)) return std::nullopt;
    } else if (const auto propio = hijo(nodo, "complexType")) {
        if (!reunirTipo({propio, esquema}, partes, 0)) return std::nullopt;
    } else if (hijo(nodo, "simpleType")) {
        return std::nullopt;
    }
    return partes;
}

std::string Esquemas::tipoLlano(const NombreXml& tipo) const {
    NombreXml actual = tipo;
    for (int nivel = 0; nivel < nivelMaximo; ++nivel) {
        if (actual.espacio == xsd) return actual.local;
        const auto donde = tipos_.find(actual);
        if (donde == tipos_.end()) return {};
        const auto restriccion = hijo(donde->second.nodo, "restriction");
        if (!restriccion) return {};
        actual = nombreCalificado(restriccion, restriccion.attribute("base").value());
    }
    return {};
}

bool Esquemas::reunirTipoNombrado(const NombreXml& nombre, std::vector<ParteWsdl>& partes, int nivel) const {
    const auto donde = tipos_.find(nombre);
    return donde != tipos_.end() && reunirTipo(donde->second, partes, nivel);
}

// A complex type without child elements is one with no parameters; one whose content is a plain value is none
// that this client can fill.
bool Esquemas::reunirTipo(const Global& tipo, std::vector<ParteWsdl>& partes, int nivel) const {
    if (nivel > nivelMaximo || nombreLocal(tipo.nodo) != "complexType") return false;
    if (hijo(tipo.nodo, "simpleContent")) return false;
    const auto contenido = hijo(tipo.nodo, "complexContent");
    if (!contenido) return reunirGrupo(tipo, partes, nivel + 1);
    if (const auto extension = hijo(contenido, "extension")) {
        const auto base = nombreCalificado(extension, extension.attribute("base").value());
        return reunirTipoNombrado(base, partes, nivel + 1) &&
               reunirGrupo({extension, tipo.esquema}, partes, nivel + 1);
    }
    return reunirGrupo({hijo(contenido, "restriction"), tipo.esquema}, partes, nivel + 1);
}

bool Esquemas::reunirGrupo(const Global& grupo, std::vector<ParteWsdl>& partes, int nivel) const {
    if (nivel > nivelMaximo) return false;
    for (const auto nodo : elementos(grupo.nodo)) {
        const std::string_view clase = nombreLocal(nodo);
        if (clase == "element") {
            partes.push_back(parteDe({nodo, grupo.esquema}));
        } else if (clase == "sequence" || clase == "all" || clase == "choice") {
            if (!reunirGrupo({nodo, grupo.esquema}, partes, nivel + 1)) return false;
        } else if (clase == "group") {
            return false;
        }
    }
    return true;
}

// A reference stands for the global element, which always carries its namespace.
ParteWsdl Esquemas::parteDe(const Global& elemento) const {
    const auto& [nodo, esquema] = elemento;
    if (const auto referencia = nodo.attribute("ref")) {
        const auto nombre = nombreCalificado(nodo, referencia.value());
        const auto donde = elementos_.find(nombre);
        const std::string tipo = donde == elementos_.end() ? std::string{} : tipoDe(donde->second.nodo);
        return {nombre.local, nombre.espacio, tipo};
    }
    const auto forma =
        nodo.attribute("form") ? nodo.attribute("form") : esquema.attribute("elementFormDefault");
    const bool calificado = std::string_view(forma.value()) == "qualified";
    return {nodo.attribute("name").value(), calificado ? esquema.attribute("targetNamespace").value() : "",
            tipoDe(nodo)};
}

std::string Esquemas::tipoDe(pugi::xml_node elemento) const {
    if (const auto tipo = elemento.attribute("type"))
        return tipoLlano(nombreCalificado(elemento, tipo.value()));
    const auto restriccion = hijo(hijo(elemento, "simpleType"), "restriction");
    if (!restriccion) return {};
    return tipoLlano(nombreCalificado(restriccion, restriccion.attribute("base").value()));
}

}  // namespace tarvoline::soap
