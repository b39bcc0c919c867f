// The XML that the program reads. VXCRM's common XML: a root element whose children carry an attribute `Key`;
// an entry's value is the text of the child's second attribute.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::core {

struct Entorno;

// `empresa` empty means Estado::gEmpresaCRM; `archivo` empty means "Total<empresa>.xml" of the data
// directory. A missing or broken file, entry or attribute gives `defecto`.
std::string LeerClaveXML(Entorno& entorno, std::string_view clave, std::string_view defecto,
                         std::string_view empresa = {}, std::string_view archivo = {});

// A text that is no XML, with the parser's reason.
class ErrorXml : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// A reply that is a list: the texts of the root's children, in their order; children without text are left
// out. `utf8` is UTF-8 whatever its declaration says. Throws ErrorXml.
std::vector<std::string> LeerListaXML(std::string_view utf8);

}  // namespace tarvoline::core
