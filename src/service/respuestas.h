// The texts that the service answers with, taken apart. None of their grammars has an escape: what separates
// cannot stand in a value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::service {

// Of the records of DatosUsuario ("|" between records, "-" between fields, from 0): trimmed field 2 of the
// first record that has one, the user's account code; "" when none has.
std::string codigoDeDatosUsuario(std::string_view resultado);

struct UsuarioCuenta {
    std::string usuario;   // trimmed
    std::string password;  // in clear
    std::string etiqueta;  // name for display
};
// The records of CarpetasNserie (fields 1, 2 and 3); blank records are left out, missing fields are "".
std::vector<UsuarioCuenta> leerUsuariosCuenta(std::string_view resultado);

struct EntradaHistorico {
    std::string momento;  // date and time with seconds, one blank between them
    std::string texto;
    std::string columna;  // a further column of the report
};
// The records of LeerHistorico ("|" between records, "@/" between fields; fields 1, 2 and 3). A blank record
// keeps its place as an entry of empty texts. "" has no records.
std::vector<EntradaHistorico> leerHistorico(std::string_view resultado);

// Names divided by tabs, in the order received; empty ones are left out.
std::vector<std::string> leerNombres(std::string_view resultado);

// Digits of a size in bytes as a 32-bit number. Throws std::overflow_error for 2 GiB and more, and
// std::invalid_argument for what is no size: it must not pass for an empty file that then takes the place of
// a good one.
std::int32_t leerTamano(std::string_view resultado);

}  // namespace tarvoline::service
