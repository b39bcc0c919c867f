// What one of the two roads to a company, its files or the accounting service, does not carry: the table of
// docs/remote-link.md, so that the page that people read is what programs go by.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::tools {

// A row of the table; "*" stands for any.
struct Excepcion {
    std::string miembro;    // of Enlace
    std::string coleccion;  // "apunte", "iva", ... "llamada"
    std::string campo;
};

// The rows between the lines "<!-- caminos -->" and "<!-- fin -->": "| member | collection | field | why |",
// heads and rulers passed over. Throws std::runtime_error when there is no such table.
std::vector<Excepcion> leerCaminos(std::string_view markdown);

bool exceptuado(const std::vector<Excepcion>& excepciones, std::string_view miembro,
                std::string_view coleccion, std::string_view campo);

}  // namespace tarvoline::tools
