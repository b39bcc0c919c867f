// The door between HTTP and the operations: the addresses of the copies and of the accounting link, their
// WSDLs, requests in, replies and faults out.
#pragma once

#include <array>
#include <functional>
#include <string>

#include "core/registro.h"
#include "server/conexiones.h"
#include "server/enlace_operaciones.h"
#include "server/operaciones.h"
#include "soap/servidor.h"

namespace tarvoline::server {

class Puerta {
  public:
    Puerta(Operaciones& operaciones, OperacionesEnlace& enlace, core::Registro& registro);

    // GET ...?wsdl gives the contract, with the host that the client asked as its address; POST calls.
    void montarLlamadas(httplib::Server& servidor, const std::string& esquema);
    // The contract only, with an address under https on `puertoTls` of the host that the client asked.
    void montarSoloContrato(httplib::Server& servidor, int puertoTls);

  private:
    // What stands behind an address.
    struct Ventanilla {
        const char* direcciones;  // a regular expression
        std::string saludo;       // of a call without "?wsdl"
        soap::Contrato contrato;
        std::function<std::string(soap::PeticionSoap&, const std::string& direccion)> llamar;
    };
    static void darContrato(const Ventanilla& ventanilla, const httplib::Request& peticion,
                            httplib::Response& respuesta, const std::string& base);
    void atender(const Ventanilla& ventanilla, const httplib::Request& peticion,
                 httplib::Response& respuesta) const;

    core::Registro& registro_;
    std::array<Ventanilla, 2> ventanillas_;
};

}  // namespace tarvoline::server
