// qztabla: the tables of a company by hand.
#include "qztabla.h"

#include <iostream>

#include "core/linea_ordenes.h"

int main(int argc, char** argv) {
    using namespace tarvoline;
    namespace salida = tools::salida;
    CLI::App programa("Tablas de una empresa, a mano", "qztabla");
    core::hablarEspanol(programa);
    programa.footer("Salida: 0 hecho, 1 fallo, 2 argumentos malos; otras, en la ayuda de cada orden.");
    programa.require_subcommand(1);
    tools::TareaTabla tarea;
    tools::anadirDefinir(programa, tarea);
    tools::anadirComunes(programa, tarea);
    tools::anadirPlan(programa, tarea);
    tools::anadirVolcar(programa, tarea);
    tools::anadirVerificar(programa, tarea);
    tools::anadirReindexar(programa, tarea);
    tools::anadirRecalcular(programa, tarea);
    try {
        programa.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return programa.exit(error) == 0 ? salida::hecho : salida::ordenMala;
    }
    try {
        return tarea();
    } catch (const std::exception& error) {
        std::cout.flush();
        std::cerr << "qztabla: " << error.what() << '\n';
        return salida::fallo;
    }
}
