// The look at a document before the parser gets it. Inside the folder only.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::soap {

struct XmlRevisado {
    // The document without its comments and declarations; each long text stands as marcaLargo and its
    // place in `largos`, from 0, in decimal digits.
    std::string reducido;
    std::vector<std::string_view> largos;  // in the bytes that were looked at
};

// No document can hold this character itself, so it is free to mark what was taken out.
inline constexpr char marcaLargo = '\x01';

// Walks the markup once and refuses what DocumentoXml says it refuses. It does not prove the document well
// formed: that is left to the parser. Throws ErrorServicio.
XmlRevisado revisarXml(std::string_view xml, std::string_view que);

// ISO-8859-1 by its declaration; false when it is UTF-8. Throws ErrorServicio for any other encoding.
bool esLatin1(std::string_view xml, std::string_view que);

}  // namespace tarvoline::soap
