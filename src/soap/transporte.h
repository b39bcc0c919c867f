// HTTP for the client: one kept-alive connection, one request at a time, each sent at most once. Inside the
// folder only.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "soap/cliente.h"

namespace tarvoline::soap {

struct RespuestaHttp {
    long estado = 0;
    std::string tipo;         // media type in lower case, without parameters
    std::string_view cuerpo;  // good until the next request
};

class Transporte {
  public:
    // Both are looked at for every request, may be empty, and outlive this object.
    Transporte(const OpcionesTransporte& opciones, const std::function<void(bool)>& alEsperar,
               const std::function<void()>& alLatir);
    ~Transporte();
    Transporte(const Transporte&) = delete;
    Transporte& operator=(const Transporte&) = delete;

    // Any answer of the server is a result, whatever its status. Throws ErrorServicio when none came whole.
    RespuestaHttp Obtener(const std::string& url);
    // `accion` goes out as SOAPAction.
    RespuestaHttp Enviar(const std::string& url, const std::string& accion, std::string_view cuerpo);

  private:
    class Cabeceras;
    struct Curl;
    RespuestaHttp pedir(const std::string& url, const Cabeceras& lineas);

    std::unique_ptr<Curl> curl_;
    const std::function<void(bool)>& alEsperar_;
};

}  // namespace tarvoline::soap
