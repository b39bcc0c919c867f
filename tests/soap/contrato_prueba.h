// A contract with every kind of value, and a client that talks to a scripted server under it.
#pragma once

#include <string>
#include <vector>

#include "apoyo/servidor_guion.h"
#include "soap/cliente.h"
#include "soap/servidor.h"

namespace tarvoline::pruebas {

inline soap::Contrato contratoPrueba() {
    using soap::TipoValor;
    return {"Almacen",
            "urn:almacen",
            {{"DTS", {}},
             {"Guardar",
              {{"nombre"},
               {"bytes", TipoValor::bytes, true},
               {"posicion", TipoValor::entero, true},
               {"sesion", TipoValor::texto, true}}}}};
}

inline soap::Bytes aBytes(std::string_view texto) {
    const auto* primero = reinterpret_cast<const std::byte*>(texto.data());
    return {primero, primero + texto.size()};
}

// A server that answers GET with the contract's WSDL and POST as the test says, and a client that has read
// it.
class ServicioGuion {
  public:
    explicit ServicioGuion(ServidorGuion::Guion alLlamar, soap::OpcionesTransporte opciones = {})
        : contrato_(contratoPrueba()),
          servidor([this, alLlamar = std::move(alLlamar)](const PeticionGuion& p) {
              if (p.metodo != "GET") return alLlamar(p);
              return Actuacion::http(200, "text/xml; charset=utf-8",
                                     soap::EscribirWsdl(contrato_, servidor.url("/almacen.asmx")));
          }),
          conexion(std::move(opciones)),
          cliente(conexion) {}

    void iniciar() { cliente.Iniciar(servidor.url("/almacen.asmx?wsdl")); }
    std::string dts() { return cliente.Llamar("DTS", {}); }

    // What a call of DTS fails with; "" when it succeeds.
    std::string falloDeDts() {
        try {
            dts();
        } catch (const soap::ErrorServicio& error) {
            return error.what();
        }
        return {};
    }

  private:
    soap::Contrato contrato_;

  public:
    ServidorGuion servidor;
    soap::Conexion conexion;
    soap::ClienteSoap cliente;
};

// An answer to DTS that is right in every respect.
inline std::string respuestaDts(std::string_view resultado) {
    const auto contrato = contratoPrueba();
    return soap::EscribirRespuesta(contrato, {contrato.operacion("DTS"), {}}, resultado);
}

}  // namespace tarvoline::pruebas
