// A backup service that plays a script: each operation answers what the test queued or set, and every call is
// written down with its arguments. Its parameter names are nobody's, so a client must go by position.
//
//     ServicioGuion servicio;
//     servicio.responder("ListadoArchivos", "uno\tdos");
//     servicio.responder("FileSize", [](auto& argumentos) { ... });
//     servicio.fallar("Backup", 3);                   // its third call from now gets a fault
//     servicio.cortar("Restore");                     // the line is cut in place of an answer
//     estado.gUrlServicio = servicio.url();
//     EXPECT_EQ(servicio.nombres(), "DTS DatosUsuario");
//
// Unless told otherwise `DTS` gives a fresh text, `DatosUsuario` account code CUENTA1, and all else "".
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "apoyo/servidor_guion.h"
#include "core/credencial.h"
#include "soap/servidor.h"

namespace tarvoline::pruebas {

class ServicioGuion {
  public:
    using Argumentos = std::vector<soap::Valor>;
    using Paso = std::function<std::string(Argumentos&)>;
    struct Llamada {
        std::string operacion;
        Argumentos argumentos;
        std::string texto(std::size_t i) const { return std::get<std::string>(argumentos.at(i)); }
        std::int32_t entero(std::size_t i) const { return std::get<std::int32_t>(argumentos.at(i)); }
        const soap::Bytes& bytes(std::size_t i) const { return std::get<soap::Bytes>(argumentos.at(i)); }
    };

    explicit ServicioGuion(bool conCapacidad = true)
        : contrato_(contrato(conCapacidad)),
          servidor_([this](const PeticionGuion& peticion) { return atender(peticion); }) {
        responder("DatosUsuario", "0-x-CUENTA1-Nombre");
        responder("Carpetaraizusuario", "D:\\VX\\ABCDEFGH\\");
        responder("listadocarpetas", "DATOS\tVENTAS");
        responder("CapacidadContratada", "1");
        responder("DTS", [](Argumentos&) {
            static std::atomic<int> cuenta = 100000;
            return "dts" + std::to_string(++cuenta) + "xyz";
        });
    }

    std::string url() const { return servidor_.url("/qzback/service.asmx?wsdl"); }
    void parar() { servidor_.parar(); }

    void responder(const std::string& operacion, std::string texto) {
        responder(operacion, [texto](Argumentos&) { return texto; });
    }
    void responder(const std::string& operacion, Paso paso) {
        const std::lock_guard cerrojo(mutex_);
        pasos_[operacion] = std::move(paso);
    }
    // The `vez`th call from now is answered by a fault "fallo de prueba" with detail "detalle de prueba".
    void fallar(const std::string& operacion, int vez = 1) { averia(operacion, vez, false); }
    // ... by the end of the line.
    void cortar(const std::string& operacion, int vez = 1) { averia(operacion, vez, true); }

    std::vector<Llamada> llamadas(std::string_view operacion = {}) const {
        const std::lock_guard cerrojo(mutex_);
        std::vector<Llamada> elegidas;
        for (const auto& llamada : llamadas_) {
            if (operacion.empty() || llamada.operacion == operacion) elegidas.push_back(llamada);
        }
        return elegidas;
    }
    // Names of all calls in their order, divided by blanks; `DTS` left out unless asked for.
    std::string nombres(bool conDts = false) const {
        std::string texto;
        for (const auto& llamada : llamadas()) {
            if (conDts || llamada.operacion != "DTS") {
                texto += (texto.empty() ? "" : " ") + llamada.operacion;
            }
        }
        return texto;
    }
    void olvidar() {
        const std::lock_guard cerrojo(mutex_);
        llamadas_.clear();
    }

  private:
    struct Averia {
        int faltan = 0;
        bool corta = false;
    };

    static soap::Contrato contrato(bool conCapacidad) {
        using soap::TipoValor;
        const auto textos = [](std::initializer_list<const char*> nombres) {
            std::vector<soap::Parametro> parametros;
            for (const char* nombre : nombres)
                parametros.push_back({nombre});
            return parametros;
        };
        auto envio = textos({"a", "b", "c", "d", "e", "f"});
        envio.push_back({"g", TipoValor::bytes, true});
        envio.push_back({"h", TipoValor::entero, true});
        auto recepcion = textos({"a", "b", "c", "d", "e"});
        recepcion.push_back({"f", TipoValor::entero, true});
        recepcion.push_back({"g", TipoValor::entero, true});
        recepcion.push_back({"h", TipoValor::bytes, true});
        soap::Contrato contrato{"Guion",
                                "urn:prueba:guion",
                                {{"DTS", {}},
                                 {"DatosUsuario", textos({"a", "b"})},
                                 {"Carpetaraizusuario", textos({"a", "b"})},
                                 {"ActualizaNserie", textos({"a", "b"})},
                                 {"listadocarpetas", textos({"a", "b"})},
                                 {"ListadoArchivos", textos({"a", "b", "c", "d"})},
                                 {"FileSize", textos({"a", "b", "c", "d", "e"})},
                                 {"Backup", envio},
                                 {"Restore", recepcion},
                                 {"EliminarArchivo", textos({"a", "b", "c", "d", "e"})},
                                 {"CalcularEspacioTotal", textos({"a", "b"})},
                                 {"CarpetasNserie", textos({"a"})},
                                 {"GrabarHistorico", textos({"a", "b", "c"})},
                                 {"LeerHistorico", textos({"a", "b", "c"})}}};
        if (conCapacidad) contrato.operaciones.push_back({"CapacidadContratada", textos({"a", "b", "c"})});
        return contrato;
    }

    void averia(const std::string& operacion, int vez, bool corta) {
        const std::lock_guard cerrojo(mutex_);
        averias_[operacion] = {vez, corta};
    }

    Actuacion atender(const PeticionGuion& peticion) {
        constexpr std::string_view tipo = "text/xml; charset=utf-8";
        if (peticion.metodo == "GET") {
            return Actuacion::http(200, tipo, soap::EscribirWsdl(contrato_, servidor_.url("/servicio")));
        }
        auto soap = soap::LeerPeticion(contrato_, peticion.cuerpo);
        const std::string nombre = soap.operacion->nombre;
        const std::lock_guard cerrojo(mutex_);
        llamadas_.push_back({nombre, soap.argumentos});
        if (auto averia = averias_.find(nombre); averia != averias_.end() && --averia->second.faltan == 0) {
            const bool corta = averia->second.corta;
            averias_.erase(averia);
            return corta ? Actuacion::cortar()
                         : Actuacion::http(
                               500, tipo,
                               soap::EscribirFallo("Server", "fallo de prueba", "detalle de prueba"));
        }
        const auto paso = pasos_.find(nombre);
        const auto resultado = paso == pasos_.end() ? std::string() : paso->second(soap.argumentos);
        return Actuacion::http(200, tipo, soap::EscribirRespuesta(contrato_, soap, resultado));
    }

    soap::Contrato contrato_;
    mutable std::mutex mutex_;
    std::map<std::string, Paso> pasos_;
    std::map<std::string, Averia> averias_;
    std::vector<Llamada> llamadas_;
    ServidorGuion servidor_;  // last: its thread uses all of the above
};

// Keeps what Backup brings and gives it back through FileSize and Restore, by name alone.
class ArchivosServicio {
  public:
    explicit ArchivosServicio(ServicioGuion& servicio) {
        servicio.responder("Backup", [this](ServicioGuion::Argumentos& a) {
            auto& archivo = archivos[core::DecodificarNombre(std::get<std::string>(a[5]))];
            const auto& bytes = std::get<soap::Bytes>(a[6]);
            const auto desde = static_cast<std::size_t>(std::get<std::int32_t>(a[7]) - 1);
            archivo.resize(std::max(archivo.size(), desde + bytes.size()));
            std::copy(bytes.begin(), bytes.end(),
                      reinterpret_cast<std::byte*>(archivo.data()) + static_cast<std::ptrdiff_t>(desde));
            return std::string();
        });
        servicio.responder("FileSize", [this](ServicioGuion::Argumentos& a) {
            const auto lugar = archivos.find(core::DecodificarNombre(std::get<std::string>(a[4])));
            return lugar == archivos.end() ? "ERROR:no existe" : std::to_string(lugar->second.size());
        });
        servicio.responder("Restore", [this](ServicioGuion::Argumentos& a) {
            const auto& archivo = archivos[core::DecodificarNombre(std::get<std::string>(a[4]))];
            const auto trozo = archivo.substr(static_cast<std::size_t>(std::get<std::int32_t>(a[5]) - 1),
                                              static_cast<std::size_t>(std::get<std::int32_t>(a[6])));
            const auto bytes = std::as_bytes(std::span(trozo.data(), trozo.size()));
            a[7] = soap::Bytes(bytes.begin(), bytes.end());
            return std::string();
        });
    }
    std::map<std::string, std::string> archivos;
};

// Bytes of which no two nearby are alike, so that a shifted piece shows.
inline std::string contenidoDePrueba(std::size_t longitud) {
    std::string contenido(longitud, '\0');
    std::uint32_t azar = 2463534242U;
    for (auto& byte : contenido) {
        azar ^= azar << 13;
        azar ^= azar >> 17;
        azar ^= azar << 5;
        byte = static_cast<char>(azar >> 24);
    }
    return contenido;
}

}  // namespace tarvoline::pruebas
