#include "soap/cliente.h"

#include <map>

#include "soap/sobre.h"
#include "soap/transporte.h"
#include "soap/wsdl.h"

namespace tarvoline::soap {
namespace {

// What the status and the media type alone tell.
void exigirXml(const RespuestaHttp& respuesta) {
    if (respuesta.estado != 200) {
        throw ErrorServicio("el servidor contesta con el estado HTTP " + std::to_string(respuesta.estado));
    }
    if (respuesta.cuerpo.empty()) throw ErrorServicio("la respuesta del servicio está vacía");
    if (respuesta.tipo == "text/html") {
        throw ErrorServicio("el servidor contesta con una página web en lugar del servicio");
    }
    const bool esXml = respuesta.tipo.ends_with("/xml") || respuesta.tipo.ends_with("+xml");
    if (!esXml && !respuesta.tipo.empty()) {
        throw ErrorServicio("la respuesta del servicio es de un tipo que no le corresponde: " +
                            respuesta.tipo);
    }
}

}  // namespace

class Conexion::Interior {
  public:
    Interior(const OpcionesTransporte& opciones, const std::function<void(bool)>& alEsperar,
             const std::function<void()>& alLatir)
        : transporte(opciones, alEsperar, alLatir) {}

    Transporte transporte;
    std::map<std::string, std::shared_ptr<const ServicioWsdl>, std::less<>> descripciones;
    std::string cuerpo;  // of the last request; its memory serves the next
};

Conexion::Conexion(const OpcionesTransporte& opciones)
    : interior_(std::make_unique<Interior>(opciones, alEsperar, alLatir)) {}

Conexion::~Conexion() = default;

void ClienteSoap::Iniciar(std::string_view urlWsdl, std::string_view servicio, std::string_view puerto,
                          std::string_view) {
    std::string clave(urlWsdl);
    ((clave += '\n') += servicio) += '\n';
    clave += puerto;
    auto& interior = conexion_.interior();
    auto& guardado = interior.descripciones[clave];
    if (guardado == nullptr) {
        const auto respuesta = interior.transporte.Obtener(std::string(urlWsdl));
        exigirXml(respuesta);
        guardado = std::make_shared<const ServicioWsdl>(LeerWsdl(respuesta.cuerpo, servicio, puerto));
    }
    servicio_ = guardado;
    clave_ = std::move(clave);
}

bool ClienteSoap::ofrece(std::string_view operacion) const {
    if (servicio_ == nullptr) return false;
    const auto donde = servicio_->operaciones.find(operacion);
    return donde != servicio_->operaciones.end() && donde->second.motivo.empty();
}

std::string ClienteSoap::Llamar(std::string_view operacion, std::span<Valor> argumentos) {
    try {
        if (servicio_ == nullptr) throw ErrorServicio("el cliente del servicio no está iniciado");
        const auto donde = servicio_->operaciones.find(operacion);
        if (donde == servicio_->operaciones.end()) {
            throw ErrorServicio("el servicio no ofrece la operación " + std::string(operacion));
        }
        EscribirLlamada(donde->second, argumentos, conexion_.interior().cuerpo);
        return LeerRespuesta(donde->second, pedir(donde->second.accion), argumentos);
    } catch (const ErrorServicio& error) {
        detail_ = error.detail();
        throw;
    }
}

// The reply to the call that was written; it is good until the next one.
std::string_view ClienteSoap::pedir(const std::string& accion) {
    auto& interior = conexion_.interior();
    std::optional<ErrorServicio> fallo;
    try {
        const auto respuesta = interior.transporte.Enviar(servicio_->direccion, accion, interior.cuerpo);
        if (respuesta.estado != 200) fallo = LeerFallo(respuesta.cuerpo);
        if (!fallo) {
            exigirXml(respuesta);
            return respuesta.cuerpo;
        }
    } catch (const ErrorServicio&) {
        interior.descripciones.erase(clave_);
        throw;
    }
    throw ErrorServicio(*fallo);
}

}  // namespace tarvoline::soap
