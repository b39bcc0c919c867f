// What a command tells: rows for people, or one JSON object for programs.
#pragma once

#include <iosfwd>
#include <string>
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

struct Informe {
    int codigo = 0;
    std::string motivo;  // why it failed; "" otherwise
    std::vector<Dato> datos;
    std::vector<Tabla> tablas;

    void dato(std::string clave, std::string etiqueta, std::string valor, bool numero = false) {
        datos.push_back({std::move(clave), std::move(etiqueta), std::move(valor), numero});
    }
};

// JSON: {"codigo": 0, "motivo": "", ...}. Otherwise aligned columns and "label value" lines; the reason of a
// failure is not repeated (it stands on standard error).
void escribir(std::ostream& salida, const Informe& informe, bool json);

}  // namespace tarvoline::consola
