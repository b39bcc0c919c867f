// A session on a service that plays a script.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <variant>
#include <vector>

#include "apoyo/servidor_guion.h"
#include "apoyo/variables_proceso.h"
#include "apoyo_enlace.h"
#include "soap/servidor.h"

namespace tarvoline::pruebas {

// Of every form.
constexpr const char* cabecera = "<?xml version=\"1.0\" standalone=\"yes\" ?>\r\n";

// A service that answers what the test says, and keeps what it was asked.
struct Remoto : testing::Test, MundoEnlace {
    Remoto() {
        variables.poner("no_proxy", "127.0.0.1");
        enlace.CerrarEmpresa();
    }
    static soap::Contrato contrato() {
        return {"S",
                "urn:prueba",
                {{"ID", {{"u"}, {"c"}}}, {"VXWebService", {{"x"}, {"s", soap::TipoValor::texto, true}}}}};
    }
    Actuacion actuar(const PeticionGuion& peticion) {
        if (peticion.metodo == "GET") {
            return Actuacion::http(200, "text/xml",
                                   soap::EscribirWsdl(contrato(), servidor.url("/vxenlace.asmx")));
        }
        const soap::Contrato suyo = contrato();
        const soap::PeticionSoap llamada = soap::LeerPeticion(suyo, peticion.cuerpo);
        const auto& texto = std::get<std::string>(llamada.argumentos[0]);
        if (llamada.operacion->nombre == "ID") return dar(suyo, llamada, entrada);
        formas.push_back(texto.substr(std::string(cabecera).size()));
        if (cortado) return Actuacion::cortar();
        for (const auto& [parte, respuesta] : respuestas) {
            if (texto.find("<" + parte) != std::string::npos) return dar(suyo, llamada, respuesta);
        }
        return dar(suyo, llamada, "");
    }
    static Actuacion dar(const soap::Contrato& contrato, const soap::PeticionSoap& llamada,
                         const std::string& texto) {
        return Actuacion::http(200, "text/xml", soap::EscribirRespuesta(contrato, llamada, texto));
    }
    void entrar() { enlace.Login("ANA", "clave", servidor.url("")); }
    // In, with a company of 2026.
    void abrir() {
        respuestas["EMPRESAEXISTS"] = "SI";
        respuestas["GETTOTAL"] = "26";
        entrar();
        respuestas.erase("GETTOTAL");
        respuestas["VALOR>AÑO"] = "26";
        respuestas["VALOR>A&#209;O"] = "26";
        respuestas["VALOR>APERTURA"] = "01";
        enlace.AbrirEmpresa("Mía");
        formas.clear();
    }
    const std::string& ultima() const { return formas.back(); }

    VariablesProceso variables;
    std::string entrada = "tok\tANA\t01\tU1\tAna\t2";
    std::map<std::string, std::string> respuestas;  // by what the form has in it
    std::vector<std::string> formas;                // without their head
    bool cortado = false;
    ServidorGuion servidor{[this](const PeticionGuion& peticion) { return actuar(peticion); }};
};

}  // namespace tarvoline::pruebas
