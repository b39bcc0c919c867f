// qztabla monedas, qztabla iva: the common files from their readable sources.
#include "data/fuente_comunes.h"
#include "platform/archivos.h"
#include "qztabla.h"

namespace tarvoline::tools {

namespace {

using Compilador = std::string (*)(std::string_view archivo, std::string_view utf8);

void anadir(CLI::App& programa, TareaTabla& tarea, const char* nombre, const char* que, const char* ayuda,
            Compilador compilar) {
    struct Argumentos {
        std::string fuente, destino;
    };
    const auto argumentos = std::make_shared<Argumentos>();
    auto* orden = programa.add_subcommand(nombre, que);
    orden->footer(ayuda);
    orden->add_option("FUENTE", argumentos->fuente, "Lista legible, en UTF-8")->required();
    orden->add_option("DESTINO", argumentos->destino, "Archivo que se escribe")->required();
    orden->callback([argumentos, compilar, &tarea] {
        tarea = [argumentos, compilar] {
            const auto archivos = platform::crearSistemaArchivos();
            const auto fuente = platform::leerTodo(*archivos, argumentos->fuente);
            platform::escribirAtomico(*archivos, argumentos->destino, compilar(argumentos->fuente, fuente));
            return 0;
        };
    });
}

}  // namespace

void anadirComunes(CLI::App& programa, TareaTabla& tarea) {
    anadir(programa, tarea, "monedas", "Compila una tabla de monedas (Moneda1.QZF)",
           "La fuente, una línea por moneda (las que empiezan por # son comentarios):\n"
           "  moneda 0  EUR  2  1  EURO    fila de 0 a 9, abreviatura, decimales, cambio, nombre",
           data::compilarMonedas);
    anadir(programa, tarea, "iva", "Compila los tipos de IVA (IVA03.QZF)",
           "La fuente, una línea por tipo (las que empiezan por # son comentarios):\n"
           "  tipo 1  21  0  IVA general   número de 1 a 300, % de cuota, % de recargo, nombre",
           data::compilarTiposIva);
}

}  // namespace tarvoline::tools
