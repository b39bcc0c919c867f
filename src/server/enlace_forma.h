// The XML forms of the accounting link, read strictly: no document type, no entity but XML's own, names and
// sizes within bounds. docs/remote-link.md.
#pragma once

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace pugi {
class xml_document;
}

namespace tarvoline::server {

// A form that is none; the text goes back to whoever sent it.
class ErrorForma : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct FormaEnlace {
    std::string operacion;
    std::string token, carpeta, empresa;
    std::map<std::string, std::string, std::less<>> campos;  // the other elements, by name
    std::shared_ptr<pugi::xml_document> documento;

    // "" when there is no such field.
    const std::string& campo(std::string_view nombre) const;
};

// `xml` is UTF-8. Characters 128 to 159 mean those of Windows-1252. Throws ErrorForma.
FormaEnlace leerForma(std::string_view xml);

// A text of the form as it was meant: characters 128 to 159 as those of Windows-1252.
std::string textoDeForma(std::string_view utf8);

}  // namespace tarvoline::server
