// A WSDL 1.1 document as the calls it allows: what a client must write for each operation and what it may
// read back. Inside the folder only.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "soap/valores.h"

namespace tarvoline::soap {

// One parameter, as an element of the request.
struct ParteWsdl {
    std::string nombre;
    std::string espacio;  // "" = unqualified
    std::string tipo;  // name of the XML Schema type, for messages that carry types; "" when not a plain one
};

struct OperacionWsdl {
    std::string nombre;
    std::string accion;  // SOAPAction
    bool rpc = false;
    bool codificada = false;          // use="encoded": each parameter carries its type
    std::string motivo;               // why it cannot be called; "" = it can
    std::string envoltura;            // element around the parameters
    std::string espacioEnvoltura;     // its namespace
    std::vector<ParteWsdl> entrada;   // in the order of the arguments
    std::string envolturaRespuesta;   // "" = any element will do
    std::vector<std::string> salida;  // parts of the reply, in their order
};

struct ServicioWsdl {
    std::string direccion;
    std::map<std::string, OperacionWsdl, std::less<>> operaciones;
};

// `servicio` and `puerto` choose by name; empty takes the first that speaks SOAP 1.1. Operations of a form
// that this client cannot call stay in the table with their reason. Throws ErrorServicio.
ServicioWsdl LeerWsdl(std::string_view xml, std::string_view servicio = {}, std::string_view puerto = {});

}  // namespace tarvoline::soap
