// One call as the operations see it.
#pragma once

#include <string>
#include <vector>

#include "server/operaciones.h"

namespace tarvoline::server {

struct Operaciones::Llamada {
    const std::string& direccion;
    std::vector<soap::Valor>& argumentos;
    UsuarioLeido usuario;  // who proved himself; null for the operations without a credential

    const std::string& texto(std::size_t indice) const {
        return std::get<std::string>(argumentos.at(indice));
    }
    std::int32_t entero(std::size_t indice) const { return std::get<std::int32_t>(argumentos.at(indice)); }
    soap::Bytes& bytes(std::size_t indice) { return std::get<soap::Bytes>(argumentos.at(indice)); }
};

}  // namespace tarvoline::server
