// The inline XML Schemas of a WSDL: which elements stand in the sequence of a global element or type. Inside
// the folder only.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "soap/wsdl.h"
#include "soap/xml.h"

namespace tarvoline::soap {

class Esquemas {
  public:
    // `tipos` is the WSDL's types element, or a null node. The document must outlive this table.
    explicit Esquemas(pugi::xml_node tipos);

    // The children of a global element: of its own complex type, of the named one, or none when it is empty.
    // Nothing when the element is unknown or not made of child elements.
    std::optional<std::vector<ParteWsdl>> hijosDe(const NombreXml& elemento) const;
    // The plain XML Schema type behind a type's name, through restrictions; "" when it is a complex one.
    std::string tipoLlano(const NombreXml& tipo) const;

  private:
    struct Global {
        pugi::xml_node nodo;
        pugi::xml_node esquema;
    };
    using Tabla = std::map<NombreXml, Global>;

    bool reunirTipo(const Global& tipo, std::vector<ParteWsdl>& partes, int nivel) const;
    bool reunirTipoNombrado(const NombreXml& nombre, std::vector<ParteWsdl>& partes, int nivel) const;
    bool reunirGrupo(const Global& grupo, std::vector<ParteWsdl>& partes, int nivel) const;
    ParteWsdl parteDe(const Global& elemento) const;
    std::string tipoDe(pugi::xml_node elemento) const;

    Tabla elementos_;
    Tabla tipos_;
};

}  // namespace tarvoline::soap
