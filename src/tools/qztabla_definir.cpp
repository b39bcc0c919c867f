// qztabla definir: a definition file from its readable source.
#include "core/carpetas.h"
#include "data/fuente_definicion.h"
#include "platform/archivos.h"
#include "qztabla.h"

namespace tarvoline::tools {

namespace {

constexpr const char* ayuda =
    "La fuente, una línea por dato (las que empiezan por # son comentarios):\n"
    "  titulo LIBRO DIARIO\n"
    "  campo 2  texto 10  CUENTA      posición, clase, título; clases: texto con su ancho, fecha,\n"
    "                                 doble, simple, entero16, entero32\n"
    "  campos de planc.tabla          los campos de otra fuente de la misma carpeta\n"
    "  clave 1  2(1,10) 1(1,6)        posición(primer carácter,caracteres) de cada segmento";

void definir(const std::string& fuente, const std::string& destino) {
    const auto archivos = platform::crearSistemaArchivos();
    const auto carpeta = core::SepararRuta(fuente).directorio;
    const auto definicion = data::leerFuenteDefinicion(
        fuente, platform::leerTodo(*archivos, fuente),
        [&](std::string_view otra) { return platform::leerTodo(*archivos, carpeta + std::string(otra)); });
    platform::escribirAtomico(*archivos, destino, data::componerDefinicion(definicion));
}

}  // namespace

void anadirDefinir(CLI::App& programa, TareaTabla& tarea) {
    struct Argumentos {
        std::string fuente, destino;
    };
    const auto argumentos = std::make_shared<Argumentos>();
    auto* orden = programa.add_subcommand("definir", "Compila la definición de una tabla (.QZA)");
    orden->footer(ayuda);
    orden->add_option("FUENTE", argumentos->fuente, "Descripción legible, en UTF-8")->required();
    orden->add_option("DESTINO", argumentos->destino, "Archivo de definición que se escribe")->required();
    orden->callback([argumentos, &tarea] {
        tarea = [argumentos] {
            definir(argumentos->fuente, argumentos->destino);
            return 0;
        };
    });
}

}  // namespace tarvoline::tools
