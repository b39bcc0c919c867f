// What a command tells: rows for people, or one JSON object for programs.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::consola {

// A named figure or text of the answer.
struct Dato {
    std::string clave;     // JSON member
    std::string etiqueta;  // before it for people; "" = shown without
    std::string valor;
    bool numero = false;  // JSON number
};

// A table; every row has as many cells as there are columns.
struct Tabla {
    std::string clave;  // JSON member that holds the array
    std::vector<Dato> columnas;
    std::vector<std::vector<std::string>> filas;
};

// What was done to each file of the command line: one line each for people, an array for programs.
struct Lista {
    std::string clave;
    std::string etiqueta;
    std::vector<std::string> valores;
};

struct Informe {
    int codigo = 0;
    std::string motivo;  // why it failed (the last failure of several); "" otherwise
    std::vector<Dato> datos;
    std::vector<Lista> listas;
    std::vector<Tabla> tablas;

    void dato(std::string clave, std::string etiqueta, std::string valor, bool numero = false) {
        datos.push_back({std::move(clave), std::move(etiqueta), std::move(valor), numero});
    }
};

// JSON: {"codigo": 0, "motivo": "", ...}. Otherwise aligned columns and "label value" lines; the reason of a
// failure is not repeated (it stands on standard error).
void escribir(std::ostream& salida, const Informe& informe, bool json);

// Without control characters: stored names and service texts come from elsewhere, and a terminal obeys them.
std::string paraTerminal(std::string_view texto);

}  // namespace tarvoline::consola
