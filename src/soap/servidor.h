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

// Document/literal wrapped, with `direccion` as the soap:address.
std::string EscribirWsdl(const Contrato& contrato, std::string_view direccion);

struct PeticionSoap {
    const OperacionContrato* operacion = nullptr;
    std::vector<Valor>
        argumentos;  // one for each parameter of the operation; a missing element is empty or 0
};

// Reads an envelope. Any DOCTYPE is refused; names of elements may come in any order. Throws ErrorServicio.
PeticionSoap LeerPeticion(const Contrato& contrato, std::string_view xml);
// The reply: the result, and the by-reference arguments as they stand in `argumentos`.
std::string EscribirRespuesta(const Contrato& contrato, const PeticionSoap& peticion,
                              std::string_view resultado);
std::string EscribirFallo(std::string_view codigo, std::string_view texto, std::string_view detalle = {});

}  // namespace tarvoline::soap
