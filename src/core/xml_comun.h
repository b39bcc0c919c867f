// VXCRM's common XML: a root element whose children carry an attribute `Key`; an entry's value is the text of
// the child's second attribute.
#pragma once

#include <string>
#include <string_view>

namespace tarvoline::core {

struct Entorno;

// `empresa` empty means Estado::gEmpresaCRM; `archivo` empty means "Total<empresa>.xml" of the data
// directory. A missing or broken file, entry or attribute gives `defecto`.
std::string LeerClaveXML(Entorno& entorno, std::string_view clave, std::string_view defecto,
                         std::string_view empresa = {}, std::string_view archivo = {});

}  // namespace tarvoline::core
