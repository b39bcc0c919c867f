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

struct ServicioWsdl;

struct OpcionesTransporte {
    std::size_t respuestaMaxima = std::size_t{16} * 1024 * 1024;  // bytes; a larger reply is an error
    long segundosConexion = 30;                                   // to connect; a call itself has no time-out
    std::string certificados{};  // CA bundle in place of the system's; "" = the system's
};

// What all clients of a program share: one kept-alive connection and the parsed WSDLs by address. One thread
// at a time.
//
// A request is never sent twice: a line that breaks before the answer is an error, whatever the server has
// done by then. http and https only, the server's certificate verified, no redirections; the proxy is that of
// the environment.
class Conexion {
  public:
    explicit Conexion(const OpcionesTransporte& opciones = {});
    ~Conexion();
    Conexion(const Conexion&) = delete;
    Conexion& operator=(const Conexion&) = delete;

    // Called before every request to the service (true) and when its answer or failure is there (false).
    std::function<void(bool)> alEsperar;
    // Called while a request is under way, at most ten times and at least about once a second, so that a
    // window can paint. What it throws ends the request and goes on to the caller.
    std::function<void()> alLatir;

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
    // empty takes the first. `mapa` is passed over. Throws ErrorServicio. A WSDL leaves the cache when a call
    // under it gets no usable answer, so that a service that moved is found by the next client.
    void Iniciar(std::string_view urlWsdl, std::string_view servicio = {}, std::string_view puerto = {},
                 std::string_view mapa = {});
    bool ofrece(std::string_view operacion) const;
    // Calls by name; arguments by position, as many as the operation has parameters. Parts of the reply that
    // are named like a parameter are written back into that argument, in the kind of value it already holds;
    // the first other part is the result, as text. Throws ErrorServicio, also before anything is sent: an
    // unknown operation, a wrong number of arguments, a text that XML cannot carry.
    std::string Llamar(std::string_view operacion, std::span<Valor> argumentos);
    // The fault detail text of the last failed call of this client.
    const std::string& detail() const { return detail_; }

  private:
    std::string_view pedir(const std::string& accion);

    Conexion& conexion_;
    std::string clave_;  // of the WSDL in the cache
    std::shared_ptr<const ServicioWsdl> servicio_;
    std::string detail_;
};

}  // namespace tarvoline::soap
