// What the service is told at its start, and the one error of this floor.
#pragma once

#include <stdexcept>
#include <string>

namespace tarvoline::server {

struct OpcionesServicio {
    std::string raiz;                     // folder of everything the service keeps; made when missing
    std::string direccion = "127.0.0.1";  // where it listens
    int puerto = 0;                       // plain port; 0 takes any free one
    int puertoTls = 0;                    // with a certificate: the port of the calls; 0 takes any free one
    std::string certificado;              // PEM chain; empty = calls come over the plain port
    std::string claveCertificado;         // PEM key of the certificate
    bool sinCifrar = false;               // listen beyond loopback without a certificate all the same

    bool conTls() const { return !certificado.empty(); }
};

// The service cannot start, or its store cannot be read or written. Never caused by what a client sends.
class ErrorServidor : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace tarvoline::server
