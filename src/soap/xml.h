// XML 1.0 as this floor needs it: texts written safely, and documents from strangers read within limits.
// Inside the folder only; the public headers know nothing of XML.
#pragma once

#include <pugixml.hpp>

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "soap/valores.h"

namespace tarvoline::soap {

// What becomes of a character that XML 1.0 cannot carry (most of those below the blank, half a UTF-8
// character).
enum class Impropio { rechazar, sustituir };

// Appends `texto` (UTF-8) as element content or attribute value. A carriage return goes out as a reference,
// for a reader would turn a bare one into a line feed. Impropio::rechazar throws ErrorServicio,
// Impropio::sustituir writes "?".
void escaparXml(std::string_view texto, std::string& destino, Impropio impropio);

// Appends the value as element content: texts escaped, integers in decimal, bytes in Base64.
void escribirValor(std::string& xml, const Valor& valor, Impropio impropio);

// Room for the values and their tags, near enough for one allocation.
std::size_t espacioDeValores(std::span<const Valor> valores);

// Throws ErrorServicio when `texto` is not well-formed UTF-8 or holds a character that XML cannot carry.
void exigirTextoXml(std::string_view texto);

// A parsed document. Long texts without references (file pieces in Base64, above all) are not handed to the
// parser: they stay where they are in the caller's bytes, which must therefore outlive the document.
//
// Refused: any DOCTYPE, more than 200 levels, more than 200,000 tags, entities that XML itself does not
// define, encodings other than UTF-8, ASCII and ISO-8859-1.
class DocumentoXml {
  public:
    // `que` names the document in error descriptions: "la respuesta del servicio". Throws ErrorServicio.
    DocumentoXml(std::string_view xml, std::string_view que);
    DocumentoXml(const DocumentoXml&) = delete;
    DocumentoXml& operator=(const DocumentoXml&) = delete;

    pugi::xml_node raiz() const { return documento_.document_element(); }

    // All text below `nodo`, in document order. Throws ErrorServicio when it is no proper text.
    std::string texto(pugi::xml_node nodo) const;
    // The same, read as base64Binary.
    Bytes bytes(pugi::xml_node nodo) const;
    // The texts below `nodo` without surrounding white space, joined by one blank: for nested fault details.
    std::string textoCorrido(pugi::xml_node nodo) const;

  private:
    std::string_view trozo(pugi::xml_node texto) const;
    void reunir(pugi::xml_node nodo, std::string& destino) const;

    std::string convertido_;                // UTF-8 in place of another encoding
    std::vector<std::string_view> largos_;  // the texts that the parser does not see
    pugi::xml_document documento_;
};

// Name without prefix.
std::string_view nombreLocal(pugi::xml_node nodo);
// The namespace that the prefix of a qualified name stands for at `nodo`; "" = none.
std::string espacioDePrefijo(pugi::xml_node nodo, std::string_view prefijo);
// The namespace of the element itself.
std::string espacioDe(pugi::xml_node nodo);
// First child element with that local name, whatever its prefix; null node when there is none.
pugi::xml_node hijo(pugi::xml_node padre, std::string_view nombre);

// A name with its namespace, as keys of tables.
struct NombreXml {
    std::string espacio, local;
    auto operator<=>(const NombreXml&) const = default;
};
// Reads "prefix:name" as it stands in an attribute of `nodo`.
NombreXml nombreCalificado(pugi::xml_node nodo, std::string_view valor);

// xsi:nil="true": the element stands for no value.
bool esNulo(pugi::xml_node nodo);

// Child elements, texts left out: for (auto e : elementos(nodo)).
std::vector<pugi::xml_node> elementos(pugi::xml_node padre);

}  // namespace tarvoline::soap
