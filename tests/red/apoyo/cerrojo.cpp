// Takes an exclusive lock as the tables do, for a script:   cerrojo FILE FROM LENGTH
// Prints "tomado" and holds it until its input ends, or prints "negado" (exit 1). Then whether the range can
// be read.
#include <cstdint>
#include <iostream>
#include <string>
#include <vector>

#include "platform/archivos.h"

namespace {

using namespace tarvoline::platform;

const char* leer(Archivo& archivo, const Rango& rango) {
    std::vector<std::byte> bytes(rango.longitud);
    try {
        archivo.leer(rango.desde, bytes);
        return "legible";
    } catch (const ErrorArchivo& error) {
        return error.numero() == error_archivo::permisoDenegado ? "ilegible" : "error";
    }
}

int correr(const std::vector<std::string>& argumentos) {
    const auto archivos = crearSistemaArchivos();
    const auto archivo = archivos->abrir(argumentos.at(1), Apertura::escritura, Comparticion::compartida);
    const Rango rango{std::stoull(argumentos.at(2)), std::stoull(argumentos.at(3))};
    const bool tomado = archivo->bloquear(rango, TipoBloqueo::exclusivo);
    std::cout << (tomado ? "tomado " : "negado ") << leer(*archivo, rango) << std::endl;
    if (tomado) {
        std::cin.get();
    }
    return tomado ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return correr({argv, argv + argc});
    } catch (const std::exception& error) {
        std::cerr << "cerrojo: " << error.what() << '\n';
        return 2;
    }
}
