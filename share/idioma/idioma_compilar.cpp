// Build step: idioma-compilar textos SOURCE TARGET SOURCE TARGET   two languages of the same numbers
//             idioma-compilar documento SOURCE TARGET              a text to be read by people
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "compilador.h"
#include "platform/archivos.h"

namespace {

using namespace tarvoline;

void compilarTextos(platform::SistemaArchivos& archivos, const std::vector<std::string>& rutas) {
    const auto leer = [&](const std::string& ruta) {
        auto tabla = idioma::leerFuente(ruta, platform::leerTodo(archivos, ruta));
        idioma::comprobarTextos(ruta, tabla);
        return tabla;
    };
    const auto uno = leer(rutas[0]);
    const auto otro = leer(rutas[2]);
    idioma::comprobarPareja(rutas[0], uno, rutas[2], otro);
    platform::escribirAtomico(archivos, rutas[1], idioma::componerArchivo(uno));
    platform::escribirAtomico(archivos, rutas[3], idioma::componerArchivo(otro));
}

void compilarDocumento(platform::SistemaArchivos& archivos, const std::vector<std::string>& rutas) {
    const auto contenido = idioma::componerDocumento(rutas[0], platform::leerTodo(archivos, rutas[0]));
    platform::escribirAtomico(archivos, rutas[1], contenido);
}

}  // namespace

int main(int cuantos, char** argumentos) {
    const std::string modo = cuantos > 1 ? argumentos[1] : "";
    const std::vector<std::string> rutas(argumentos + std::min(cuantos, 2), argumentos + cuantos);
    try {
        const auto archivos = platform::crearSistemaArchivos();
        if (modo == "textos" && rutas.size() == 4) {
            compilarTextos(*archivos, rutas);
        } else if (modo == "documento" && rutas.size() == 2) {
            compilarDocumento(*archivos, rutas);
        } else {
            std::cerr << "usage: idioma-compilar textos SOURCE TARGET SOURCE TARGET\n"
                         "       idioma-compilar documento SOURCE TARGET\n";
            return 2;
        }
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "idioma-compilar: " << error.what() << '\n';
        return 1;
    }
}
