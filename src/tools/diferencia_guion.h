// Scripts of calls to `Enlace`, and what a session makes of them.
//
// A line is a call: the member's name and its arguments in the order of the class, parted by tabs. Arguments
// left out at the end are empty, 0 or false. "{Fecha}" and "{Número}" stand for those of the session. Empty
// lines, and those that begin with "#", count for nothing.
//
//     Fecha<tab>15/03/26
//     Número<tab>
//     AñadirApunte<tab>5700000000<tab>Venta<tab>1<tab>121
//     GrabarAsiento
//     LeerAsiento<tab>{Fecha}<tab>{Número}
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tools/diferencia_vista.h"

namespace tarvoline::tools {

struct Llamada {
    int linea = 0;  // of the script, from 1; 0: none
    std::string miembro;
    std::vector<std::string> argumentos;
};

// A line that names no member, or has too many arguments for it; the text tells which.
class ErrorGuion : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Throws ErrorGuion.
std::vector<Llamada> interpretarGuion(std::string_view utf8);

// Calls the member. What it gives, or the error that it raises, is the item "llamada" of the view, and behind
// it stands what it has read. Errors of the file system and of the transport pass.
Vista llamar(link::Enlace& enlace, const Llamada& llamada);

}  // namespace tarvoline::tools
