// The door between HTTP and the operations: the two addresses, the WSDL, requests in, replies and faults out.
#pragma once

#include <string>

#include "core/registro.h"
#include "server/conexiones.h"
#include "server/operaciones.h"
#include "soap/servidor.h"

namespace tarvoline::server {

class Puerta {
  public:
    Puerta(Operaciones& operaciones, core::Registro& registro);

    // GET ...?wsdl gives the contract, with the host that the client asked as its address; POST calls.
    void montarLlamadas(httplib::Server& servidor, const std::string& esquema);
    // The contract only, with an address under https on `puertoTls` of the host that the client asked.
    void montarSoloContrato(httplib::Server& servidor, int puertoTls);

  private:
    void darContrato(const httplib::Request& peticion, httplib::Response& respuesta, const std::string& base);
    void atender(const httplib::Request& peticion, httplib::Response& respuesta);

    Operaciones& operaciones_;
    core::Registro& registro_;
    soap::Contrato contrato_;
};

}  // namespace tarvoline::server
