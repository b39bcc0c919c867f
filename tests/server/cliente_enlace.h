// A caller of the accounting link that writes its forms by hand: what it sends is what the test says.
#pragma once

#include <httplib.h>

#include <pugixml.hpp>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace tarvoline::pruebas {

class ClienteEnlace {
  public:
    explicit ClienteEnlace(int puerto) : http_("127.0.0.1", puerto) {
        http_.set_keep_alive(true);
        http_.set_tcp_nodelay(true);
        http_.set_read_timeout(60);
    }
    std::string llamar(const std::string& operacion,
                       const std::vector<std::pair<std::string, std::string>>& partes) {
        pugi::xml_document documento;
        auto raiz = documento.append_child("s:Envelope");
        raiz.append_attribute("xmlns:s") = "http://schemas.xmlsoap.org/soap/envelope/";
        auto llamada = raiz.append_child("s:Body").append_child(operacion.c_str());
        llamada.append_attribute("xmlns") = "urn:tarvoline:enlace";
        for (const auto& [nombre, valor] : partes)
            llamada.append_child(nombre.c_str()).text() = valor.c_str();
        std::ostringstream texto;
        documento.save(texto, "", pugi::format_raw | pugi::format_no_declaration);
        const auto respuesta = http_.Post("/vxenlace.asmx", texto.str(), "text/xml; charset=utf-8");
        if (!respuesta) return "sin respuesta";
        pugi::xml_document leida;
        leida.load_string(respuesta->body.c_str(), pugi::parse_default | pugi::parse_ws_pcdata);
        return leida.first_child()
            .child("soap:Body")
            .first_child()
            .child_value((operacion + "Result").c_str());
    }
    std::string entrar(const std::string& usuario, const std::string& clave) {
        const std::string respuesta = llamar("ID", {{"usuario", usuario}, {"clave", clave}});
        token = respuesta.substr(0, respuesta.find('\t'));
        return respuesta;
    }
    std::string cruda(const std::string& forma) { return llamar("VXWebService", {{"xml", forma}}); }
    // A form of this session with these elements, XML as it stands.
    std::string forma(const std::string& operacion, const std::string& elementos = {}) {
        return cruda("<" + operacion + "><ID>" + token + "</ID>" + elementos + "</" + operacion + ">");
    }
    std::string en(const std::string& empresa, const std::string& operacion,
                   const std::string& elementos = {}) {
        return forma(operacion, "<EMPRESA>" + empresa + "</EMPRESA>" + elementos);
    }

    std::string token;

  private:
    httplib::Client http_;
};

// An entry as GRABARASIENTO has it, with these lines of the journal and what stands behind them.
inline std::string formaAsiento(const std::string& apuntes, const std::string& fecha = "15/03/2026",
                                const std::string& secciones = {}) {
    return "<ASIENTOS><ASIENTO NUMERO='(Auto)' FECHA='" + fecha + "'><APUNTES>" + apuntes + "</APUNTES>" +
           secciones + "</ASIENTO></ASIENTOS>";
}

}  // namespace tarvoline::pruebas
