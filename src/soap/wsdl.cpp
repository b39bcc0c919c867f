// From the service inwards: port, binding, port type, messages, and with them the schemas.
#include "soap/wsdl.h"

#include <algorithm>

#include "soap/esquema.h"
#include "soap/xml.h"

namespace tarvoline::soap {
namespace {

constexpr std::string_view soap11 = "http://schemas.xmlsoap.org/wsdl/soap/";

std::string atributo(pugi::xml_node nodo, const char* nombre) {
    return nodo.attribute(nombre).value();
}

// The first child of that name which belongs to the SOAP 1.1 binding.
pugi::xml_node hijoSoap(pugi::xml_node padre, std::string_view nombre) {
    for (const auto nodo : elementos(padre)) {
        if (nombreLocal(nodo) == nombre && espacioDe(nodo) == soap11) return nodo;
    }
    return {};
}

pugi::xml_node hijoConNombre(pugi::xml_node padre, std::string_view clase, std::string_view nombre) {
    for (const auto nodo : elementos(padre)) {
        if (nombreLocal(nodo) == clase && nodo.attribute("name").value() == nombre) return nodo;
    }
    return {};
}

class LectorWsdl {
  public:
    explicit LectorWsdl(const DocumentoXml& documento)
        : raiz_(documento.raiz()),
          espacio_(atributo(raiz_, "targetNamespace")),
          esquemas_(hijo(raiz_, "types")) {
        if (nombreLocal(raiz_) != "definitions") {
            throw ErrorServicio("la descripción del servicio no es un documento WSDL");
        }
    }

    ServicioWsdl leer(std::string_view servicio, std::string_view puerto) const {
        const auto elegido = elegirPuerto(servicio, puerto);
        ServicioWsdl leido;
        leido.direccion = atributo(hijoSoap(elegido, "address"), "location");
        const auto enlace = global("binding", elegido, "binding");
        const auto tipo = global("portType", enlace, "type");
        const std::string estilo = atributo(hijoSoap(enlace, "binding"), "style");
        for (const auto nodo : elementos(enlace)) {
            if (nombreLocal(nodo) != "operation") continue;
            auto operacion = leerOperacion(nodo, tipo, estilo);
            leido.operaciones.try_emplace(operacion.nombre, std::move(operacion));
        }
        return leido;
    }

  private:
    pugi::xml_node elegirPuerto(std::string_view servicio, std::string_view puerto) const {
        for (const auto nodo : elementos(raiz_)) {
            if (nombreLocal(nodo) != "service") continue;
            if (!servicio.empty() && nodo.attribute("name").value() != servicio) continue;
            for (const auto candidato : elementos(nodo)) {
                if (nombreLocal(candidato) != "port" || !hijoSoap(candidato, "address")) continue;
                if (puerto.empty() || candidato.attribute("name").value() == puerto) return candidato;
            }
        }
        throw ErrorServicio("la descripción del servicio no ofrece el puerto SOAP pedido");
    }

    // The global definition that an attribute of `desde` names; null node when there is none.
    pugi::xml_node global(std::string_view clase, pugi::xml_node desde, const char* nombre) const {
        const auto calificado = nombreCalificado(desde, desde.attribute(nombre).value());
        if (calificado.espacio != espacio_ && !calificado.espacio.empty()) return {};
        return hijoConNombre(raiz_, clase, calificado.local);
    }

    OperacionWsdl leerOperacion(pugi::xml_node enlace, pugi::xml_node tipo, const std::string& estilo) const {
        OperacionWsdl operacion;
        operacion.nombre = atributo(enlace, "name");
        const auto soap = hijoSoap(enlace, "operation");
        operacion.accion = atributo(soap, "soapAction");
        const std::string propio = atributo(soap, "style");
        operacion.rpc = (propio.empty() ? estilo : propio) == "rpc";
        const auto entrada = hijoSoap(hijo(enlace, "input"), "body");
        operacion.codificada = atributo(entrada, "use") == "encoded";
        const auto firma = hijoConNombre(tipo, "operation", operacion.nombre);
        const auto peticion = global("message", hijo(firma, "input"), "message");
        const auto respuesta = global("message", hijo(firma, "output"), "message");
        if (!peticion) {
            operacion.motivo = "le falta el mensaje de petición";
        } else if (operacion.rpc) {
            leerRpc(operacion, peticion, respuesta, firma);
            operacion.espacioEnvoltura = atributo(entrada, "namespace");
        } else {
            leerDocumento(operacion, peticion, respuesta);
        }
        comprobarAccion(operacion);
        return operacion;
    }

    // One part, an element whose children are the parameters.
    void leerDocumento(OperacionWsdl& operacion, pugi::xml_node peticion, pugi::xml_node respuesta) const {
        const auto pedida = elementoDe(peticion);
        const auto parametros = esquemas_.hijosDe(pedida);
        if (!parametros) {
            operacion.motivo = "su petición no es un elemento con parámetros";
            return;
        }
        operacion.envoltura = pedida.local;
        operacion.espacioEnvoltura = pedida.espacio;
        operacion.entrada = *parametros;
        const auto contestada = elementoDe(respuesta);
        operacion.envolturaRespuesta = contestada.local;
        for (const auto& parte : esquemas_.hijosDe(contestada).value_or(std::vector<ParteWsdl>{})) {
            operacion.salida.push_back(parte.nombre);
        }
    }

    // The parts are the parameters; parameterOrder, where it stands, gives their order.
    void leerRpc(OperacionWsdl& operacion, pugi::xml_node peticion, pugi::xml_node respuesta,
                 pugi::xml_node firma) const {
        operacion.envoltura = operacion.nombre;
        for (const auto parte : partesDe(peticion)) {
            if (parte.attribute("element")) operacion.motivo = "sus parámetros no llevan tipo";
            const auto tipo = nombreCalificado(parte, parte.attribute("type").value());
            operacion.entrada.push_back({atributo(parte, "name"), "", esquemas_.tipoLlano(tipo)});
        }
        const std::string orden = " " + atributo(firma, "parameterOrder") + " ";
        const auto lugar = [&](const ParteWsdl& parte) { return orden.find(" " + parte.nombre + " "); };
        std::stable_sort(operacion.entrada.begin(), operacion.entrada.end(),
                         [&](const ParteWsdl& a, const ParteWsdl& b) { return lugar(a) < lugar(b); });
        for (const auto parte : partesDe(respuesta))
            operacion.salida.push_back(atributo(parte, "name"));
    }

    static std::vector<pugi::xml_node> partesDe(pugi::xml_node mensaje) {
        auto partes = elementos(mensaje);
        std::erase_if(partes, [](pugi::xml_node parte) { return nombreLocal(parte) != "part"; });
        return partes;
    }

    static NombreXml elementoDe(pugi::xml_node mensaje) {
        const auto parte = hijo(mensaje, "part");
        return nombreCalificado(parte, parte.attribute("element").value());
    }

    // It becomes a line of the HTTP request.
    static void comprobarAccion(OperacionWsdl& operacion) {
        const auto ajeno = [](char c) {
            return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == 0x7F;
        };
        if (std::any_of(operacion.accion.begin(), operacion.accion.end(), ajeno)) {
            operacion.motivo = "su acción SOAP contiene caracteres que no valen";
        }
    }

    pugi::xml_node raiz_;
    std::string espacio_;
    Esquemas esquemas_;
};

}  // namespace

ServicioWsdl LeerWsdl(std::string_view xml, std::string_view servicio, std::string_view puerto) {
    const DocumentoXml documento(xml, "la descripción del servicio");
    return LectorWsdl(documento).leer(servicio, puerto);
}

}  // namespace tarvoline::soap
