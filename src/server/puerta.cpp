#include "server/puerta.h"

#include <algorithm>

#include "core/texto.h"
#include "server/contrato.h"
#include "server/textos.h"

namespace tarvoline::server {
namespace {

constexpr const char* direccionesCopias = "/(?:qzback|qzbackup)/service\\.asmx";
constexpr const char* direccionesEnlace = "/vxenlace\\.asmx";
constexpr const char* tipoXml = "text/xml; charset=utf-8";

// The host that the client says it asked, if it looks like one: it is written into the contract.
std::string anfitrion(const httplib::Request& peticion) {
    std::string dado = peticion.get_header_value("Host");
    const bool bueno = !dado.empty() && dado.size() <= 255 && std::ranges::all_of(dado, [](char letra) {
        return esAlfanumerico(letra) || std::string_view(".:-_[]").find(letra) != std::string_view::npos;
    });
    if (bueno) return dado;
    const bool v6 = peticion.local_addr.find(':') != std::string::npos;
    return (v6 ? "[" + peticion.local_addr + "]" : peticion.local_addr) + ":" +
           std::to_string(peticion.local_port);
}

std::string sinPuerto(const std::string& anfitrion) {
    const auto dosPuntos = anfitrion.rfind(':');
    const bool esPuerto =
        dosPuntos != std::string::npos && anfitrion.find(']', dosPuntos) == std::string::npos;
    return esPuerto ? anfitrion.substr(0, dosPuntos) : anfitrion;
}

bool pideContrato(const httplib::Request& peticion) {
    return std::ranges::any_of(
        peticion.params, [](const auto& parametro) { return core::igualSinCaja(parametro.first, "wsdl"); });
}

void darXml(httplib::Response& respuesta, int estado, std::string xml) {
    respuesta.status = estado;
    respuesta.body = std::move(xml);
    respuesta.set_header("Content-Type", tipoXml);
}

}  // namespace

Puerta::Puerta(Operaciones& operaciones, OperacionesEnlace& enlace, core::Registro& registro)
    : registro_(registro),
      ventanillas_{Ventanilla{direccionesCopias, "Servicio de copias de Tarvoline", contratoCopias(),
                              [&operaciones](soap::PeticionSoap& peticion, const std::string& direccion) {
                                  return operaciones.llamar(peticion, direccion);
                              }},
                   Ventanilla{direccionesEnlace, "Enlace contable de Tarvoline", contratoEnlace(),
                              [&enlace](const soap::PeticionSoap& peticion, const std::string& direccion) {
                                  return enlace.llamar(peticion, direccion);
                              }}} {}

void Puerta::montarLlamadas(httplib::Server& servidor, const std::string& esquema) {
    for (const Ventanilla& una : ventanillas_) {
        servidor.Get(una.direcciones,
                     [&una, esquema](const httplib::Request& peticion, httplib::Response& respuesta) {
                         darContrato(una, peticion, respuesta, esquema + "://" + anfitrion(peticion));
                     });
        servidor.Post(una.direcciones,
                      [this, &una](const httplib::Request& peticion, httplib::Response& respuesta) {
                          atender(una, peticion, respuesta);
                      });
    }
}

void Puerta::montarSoloContrato(httplib::Server& servidor, int puertoTls) {
    for (const Ventanilla& una : ventanillas_) {
        servidor.Get(una.direcciones, [&una, puertoTls](const httplib::Request& peticion,
                                                        httplib::Response& respuesta) {
            darContrato(una, peticion, respuesta,
                        "https://" + sinPuerto(anfitrion(peticion)) + ":" + std::to_string(puertoTls));
        });
        servidor.Post(una.direcciones, [](const httplib::Request&, httplib::Response& respuesta) {
            darXml(respuesta, 500, soap::EscribirFallo("Client", "Las llamadas se hacen por https"));
        });
    }
}

void Puerta::darContrato(const Ventanilla& ventanilla, const httplib::Request& peticion,
                         httplib::Response& respuesta, const std::string& base) {
    if (pideContrato(peticion)) {
        darXml(respuesta, 200, soap::EscribirWsdl(ventanilla.contrato, base + peticion.path));
        return;
    }
    respuesta.set_content(ventanilla.saludo + ". El contrato: " + base + peticion.path + "?wsdl\n",
                          "text/plain; charset=utf-8");
}

void Puerta::atender(const Ventanilla& ventanilla, const httplib::Request& peticion,
                     httplib::Response& respuesta) const {
    try {
        soap::PeticionSoap llamada = soap::LeerPeticion(ventanilla.contrato, peticion.body);
        const std::string resultado = ventanilla.llamar(llamada, peticion.remote_addr);
        darXml(respuesta, 200, soap::EscribirRespuesta(ventanilla.contrato, llamada, resultado));
    } catch (const soap::ErrorServicio& error) {
        registro_.aviso("petición que no se entiende desde " + peticion.remote_addr + ": " + error.what());
        darXml(respuesta, 500, soap::EscribirFallo("Client", error.what()));
    } catch (const std::exception& error) {
        // Whoever calls is not told what lies behind.
        registro_.error(std::string("fallo al atender una llamada: ") + error.what());
        darXml(respuesta, 500, soap::EscribirFallo("Server", "El servicio no ha podido atender la llamada"));
    }
}

}  // namespace tarvoline::server
