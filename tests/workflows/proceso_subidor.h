// Runs the program `subidor` and tells how it ended.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "apoyo/proceso.h"
#include "workflows/mundo_flujos.h"

namespace tarvoline::pruebas {

struct FinSubidor {
    int codigo = 0;  // exit code, or 128 + signal
    std::string salida;
    std::string piezas, segundos;
    long memoria = 0;  // largest resident size, in KiB
};

// `mundo` has its settings in a file.
inline FinSubidor subidor(MundoFlujos& mundo, const std::string& url, const std::vector<std::string>& orden) {
    std::vector<std::string> argumentos{mundo.nucleo.rutaAjustes(), mundo.nucleo.ruta("temporal"), url};
    argumentos.insert(argumentos.end(), orden.begin(), orden.end());
    FinSubidor fin;
    fin.codigo = Proceso("../tests/subidor", argumentos, mundo.nucleo.ruta("subidor.salida"),
                         mundo.nucleo.ruta("subidor.errores"))
                     .esperar();
    fin.salida = mundo.nucleo.carpeta().leer("subidor.salida");
    std::istringstream(mundo.nucleo.carpeta().leer("subidor.errores")) >> fin.piezas >> fin.segundos >>
        fin.memoria;
    return fin;
}

}  // namespace tarvoline::pruebas
