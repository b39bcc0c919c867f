// A SOAP 1.1 client: reads a WSDL (document/literal wrapped or rpc/literal), binds by operation name and
// argument position, gives by-reference results back. It knows nothing of backups or books.
//
// Standards: SOAP 1.1, WSDL 1.1, XML Schema part 2 (string, int, base64Binary).
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "soap/valores.h"

namespace tarvoline::soap {

struct OpcionesTransporte {
    std::size_t respuestaMaxima = 16U * 1024 * 1024;  // bytes; a larger reply is an error
    long segundosConexion = 30;                       // to connect; a call itself has no time-out
    std::string certificados;                         // CA bundle in place of the system's; "" = the system's
};

// What all clients of a program share: one kept-alive connection and the parsed WSDLs by address. One thread
// at a time. A request is never sent twice.
class Conexion {
  public:
    explicit Conexion(OpcionesTransporte opciones = {});
    ~Conexion();
    Conexion(const Conexion&) = delete;
    Conexion& operator=(const Conexion&) = delete;

    // Called when a call begins to wait for the service (true) and when the reply is there (false).
    std::function<void(bool)> alEsperar;

    class Interior;
    Interior& interior() { return *interior_; }

  private:
    std::unique_ptr<Interior> interior_;
};

// One caller's view of a service. Cheap: made for one routine and dropped at its end.
class ClienteSoap {
  public:
    explicit ClienteSoap(Conexion& conexion) : conexion_(conexion) {}

    // Fetches and reads the WSDL, or takes it from the cache. `servicio` and `puerto` choose among several;
    // empty takes the first. `mapa` is passed over. Throws ErrorServicio.
    void Iniciar(std::string_view urlWsdl, std::string_view servicio = {}, std::string_view puerto = {},
                 std::string_view mapa = {});
    bool ofrece(std::string_view operacion) const;
    // Calls by name; arguments by position. Parts of the reply that are named like a parameter are written
    // back into that argument; the first other part is the result, as text. Throws ErrorServicio.
    std::string Llamar(std::string_view operacion, std::span<Valor> argumentos);
    // The fault detail text of the last failed call of this client.
    const std::string& detail() const { return detail_; }

  private:
    struct Enlazado;
    Conexion& conexion_;
    std::shared_ptr<const Enlazado> servicio_;
    std::string detail_;
};

}  // namespace tarvoline::soap
