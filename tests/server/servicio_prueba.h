// The service in the test's own process, and a client that writes its envelopes by hand: what it sends is
// what the test says, well-formed or not.
#pragma once

#include <httplib.h>

#include <map>
#include <memory>
#include <pugixml.hpp>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "apoyo/carpeta_prueba.h"
#include "apoyo/reloj_fijo.h"
#include "core/credencial.h"
#include "server/servidor_embebido.h"
#include "soap/base64.h"

namespace tarvoline::pruebas {

class FalloSoap : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

inline std::string enBase64(std::string_view bytes) {
    std::string texto;
    soap::CodificarBase64(std::as_bytes(std::span(bytes.data(), bytes.size())), texto);
    return texto;
}

class ClientePrueba {
  public:
    using Parametros = std::vector<std::pair<std::string, std::string>>;

    explicit ClientePrueba(int puerto, std::string usuario = "ANA", std::string clave = "secreta1")
        : http_("127.0.0.1", puerto), usuario_(std::move(usuario)), clave_(std::move(clave)) {
        http_.set_keep_alive(true);
        http_.set_tcp_nodelay(true);
        http_.set_read_timeout(60);
    }

    httplib::Result enviar(const std::string& cuerpo) {
        return http_.Post("/qzback/service.asmx", cuerpo, "text/xml; charset=utf-8");
    }
    static std::string sobre(const std::string& operacion, const Parametros& parametros) {
        pugi::xml_document documento;
        auto raiz = documento.append_child("s:Envelope");
        raiz.append_attribute("xmlns:s") = "http://schemas.xmlsoap.org/soap/envelope/";
        auto llamada = raiz.append_child("s:Body").append_child(operacion.c_str());
        llamada.append_attribute("xmlns") = "urn:tarvoline:copias";
        for (const auto& [nombre, valor] : parametros)
            llamada.append_child(nombre.c_str()).text() = valor.c_str();
        std::ostringstream texto;
        documento.save(texto, "", pugi::format_raw | pugi::format_no_declaration);
        return texto.str();
    }
    // The result; the other parts of the reply stand in `partes` by name.
    std::string llamar(const std::string& operacion, const Parametros& parametros) {
        const auto respuesta = enviar(sobre(operacion, parametros));
        if (!respuesta) throw FalloSoap("sin respuesta: " + httplib::to_string(respuesta.error()));
        pugi::xml_document documento;
        if (!documento.load_string(respuesta->body.c_str(), pugi::parse_default | pugi::parse_ws_pcdata)) {
            throw FalloSoap("respuesta ilegible: " + respuesta->body.substr(0, 200));
        }
        const pugi::xml_node cuerpo = documento.first_child().child("soap:Body");
        if (const auto fallo = cuerpo.child("soap:Fault")) throw FalloSoap(fallo.child_value("faultstring"));
        partes.clear();
        for (const auto& parte : cuerpo.first_child().children())
            partes[parte.name()] = parte.child_value();
        return partes.at(operacion + "Result");
    }
    std::string credencial() { return credencial(clave_); }
    std::string credencial(const std::string& clave) {
        return core::CodificarClave(llamar("DTS", {}) + clave, core::fuenteAleatoria());
    }
    // With user and a fresh credential before the other parameters.
    std::string con(const std::string& operacion, Parametros otros = {}) {
        Parametros todos{{"usuario", usuario_}, {"credencial", credencial()}};
        todos.insert(todos.end(), otros.begin(), otros.end());
        return llamar(operacion, todos);
    }

    std::string subir(const std::string& nombre, std::string_view bytes, int posicion,
                      const std::string& carpeta = "DATOS", const std::string& tipo = "PERSONAL") {
        return con("Backup", {{"codigoCuenta", "AC01"},
                              {"carpeta", carpeta},
                              {"tipo", tipo},
                              {"nombre", core::CodificarNombre(nombre)},
                              {"bytes", enBase64(bytes)},
                              {"posicion", std::to_string(posicion)}});
    }
    // As the backup manager sends a whole file: a short one with a zero byte behind, a long one in pieces
    // that overlap by one byte. The first answer that is not empty ends it.
    std::string subirEntero(const std::string& nombre, const std::string& contenido) {
        if (contenido.size() < paso) return subir(nombre, contenido + '\0', 1);
        for (std::size_t desde = 0; desde + 1 < contenido.size(); desde += paso) {
            const auto posicion = static_cast<int>(desde + 1);
            std::string fallo = subir(nombre, std::string_view(contenido).substr(desde, paso + 1), posicion);
            if (!fallo.empty()) return fallo;
        }
        return {};
    }
    Parametros lugar(const std::string& nombre, const std::string& carpeta = "DATOS",
                     const std::string& tipo = "PERSONAL") const {
        return {{"carpeta", carpeta}, {"tipo", tipo}, {"nombre", core::CodificarNombre(nombre)}};
    }
    std::string bajar(const std::string& nombre, int posicion, int cuantos,
                      const std::string& carpeta = "DATOS") {
        Parametros donde = lugar(nombre, carpeta);
        donde.insert(
            donde.end(),
            {{"posicion", std::to_string(posicion)}, {"cuantos", std::to_string(cuantos)}, {"bytes", ""}});
        resultado = con("Restore", donde);
        const soap::Bytes bytes = soap::DecodificarBase64(partes["bytes"]);
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }
    std::string bajarEntero(const std::string& nombre) {
        std::string todo;
        for (;;) {
            const std::string pieza =
                bajar(nombre, static_cast<int>(todo.size()) + 1, static_cast<int>(paso));
            if (pieza.empty()) return todo;
            todo += pieza;
        }
    }
    std::string listado(const std::string& carpeta = "DATOS", const std::string& tipo = "PERSONAL") {
        return con("ListadoArchivos", {{"carpeta", carpeta}, {"tipo", tipo}});
    }

    static constexpr std::size_t paso = 262144;
    std::map<std::string, std::string> partes;  // of the last reply
    std::string resultado;                      // of the last bajar()
    httplib::Client& http() { return http_; }

  private:
    httplib::Client http_;
    std::string usuario_, clave_;
};

// Two accounts: AC01 with ANA and BEA (1 GB), AC02 with CARLA (capacity unknown); DORA has no account.
class ServicioEnMarcha {
  public:
    explicit ServicioEnMarcha(server::OpcionesServicio opciones = {}) : opciones_(std::move(opciones)) {
        opciones_.raiz = carpeta.ruta("raiz");
        arrancar();
        servicio->usuarios().alta({"ANA", "secreta1", "ac01", "Ana López", 1});
        servicio->usuarios().alta({"BEA", "secreta2", "AC01", "Bea", {}});
        servicio->usuarios().alta({"CARLA", "secreta3", "AC02", "", {}});
        servicio->usuarios().alta({"DORA", "secreta4", "", "", {}});
    }
    explicit ServicioEnMarcha(platform::SistemaArchivos& otro) : ServicioEnMarcha() {
        servicio.reset();
        archivos = &otro;
        arrancar();
    }
    void arrancar() {
        servicio = std::make_unique<server::ServidorEmbebido>(opciones_, *archivos, reloj, registro);
        servicio->arrancar();
    }
    ClientePrueba cliente(const std::string& usuario = "ANA", const std::string& clave = "secreta1") const {
        return ClientePrueba(servicio->puerto(), usuario, clave);
    }

    CarpetaPrueba carpeta;
    RelojFijo reloj{{2026, 3, 9, 8, 7, 6}};
    core::RegistroMudo registro;
    std::unique_ptr<platform::SistemaArchivos> propio = platform::crearSistemaArchivos();
    platform::SistemaArchivos* archivos = propio.get();
    std::unique_ptr<server::ServidorEmbebido> servicio;

  private:
    server::OpcionesServicio opciones_;
};

// Bytes that differ at every step and hold zeros.
inline std::string relleno(std::size_t cuantos, unsigned semilla = 1) {
    std::string bytes(cuantos, '\0');
    unsigned valor = semilla;
    for (char& byte : bytes) {
        valor = valor * 1664525U + 1013904223U;
        byte = static_cast<char>(valor >> 24U);
    }
    return bytes;
}

}  // namespace tarvoline::pruebas
