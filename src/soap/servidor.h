// The server half: a contract written as data, its WSDL, requests read and replies written. No HTTP here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "soap/valores.h"

namespace tarvoline::soap {

enum class TipoValor { texto, entero, bytes };

struct Parametro {
    std::string nombre;
    TipoValor tipo = TipoValor::texto;
    bool porReferencia = false;  // also stands in the reply
};

struct OperacionContrato {
    std::string nombre;
    std::vector<Parametro> parametros;
};

struct Contrato {
    std::string servicio;        // name of the WSDL service
    std::string espacioNombres;  // target namespace
    std::vector<OperacionContrato> operaciones;

    const OperacionContrato* operacion(std::string_view nombre) const;  // null when there is none
};

// Document/literal wrapped, elementFormDefault qualified; soapAction is the target namespace, with a "/" at
// its end, and the operation's name. `direccion` is the soap:address.
std::string EscribirWsdl(const Contrato& contrato, std::string_view direccion);

struct PeticionSoap {
    const OperacionContrato* operacion = nullptr;  // in the contract, which outlives the request
    // One for each parameter of the operation; a missing element gives an empty value or 0.
    std::vector<Valor> argumentos;
};

// Reads an envelope. Prefixes are free, parameters may come in any order, unknown elements among them are
// passed over. Throws ErrorServicio: any DOCTYPE, an unknown operation, more than one body or operation, a
// repeated parameter, a header that must be understood, a bad integer or Base64.
PeticionSoap LeerPeticion(const Contrato& contrato, std::string_view xml);
// The reply: `<OperationResult>` and the by-reference arguments as they stand in `peticion`. Characters that
// XML cannot carry go out as "?".
std::string EscribirRespuesta(const Contrato& contrato, const PeticionSoap& peticion,
                              std::string_view resultado);
// `codigo` is "Client", "Server" or another code of SOAP 1.1, without prefix.
std::string EscribirFallo(std::string_view codigo, std::string_view texto, std::string_view detalle = {});

}  // namespace tarvoline::soap
