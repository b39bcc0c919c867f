// qztabla reindexar: the keys of a table made anew.
#include <iostream>

#include "data/reindexado.h"
#include "qztabla.h"
#include "qztabla_tabla.h"

namespace tarvoline::tools {

namespace {

using data::Reindexado;
using Fin = Reindexado::Fin;

constexpr const char* ayuda =
    "Hace un archivo de claves (.QZC) nuevo con los registros vivos de la tabla, comprueba que cada uno está "
    "en\n"
    "él una vez y ninguno más, y lo pone en lugar del viejo, que queda como anterior.TABLA.QZC. Escribe lo "
    "que\n"
    "el viejo tenía mal y los registros que no conocía y que vuelven a estar en las claves (uno que se "
    "estaba\n"
    "borrando cuando el programa se cortó es de estos). Nadie más puede tener la tabla abierta mientras "
    "tanto.\n"
    "Si se corta, queda el archivo viejo o el nuevo, entero.\n"
    "Salida: 0 hecho, 1 fallo, 2 argumentos malos, 4 la tabla está en uso y no se ha cambiado nada.";

int quejarse(const std::string& texto, int codigo) {
    std::cerr << "qztabla: " << texto << '\n';
    return codigo;
}

void contar(const Reindexado& hecho) {
    for (const std::int64_t registro : hecho.adoptados)
        std::cout << "Registro " << registro << ": adoptado.\n";
    if (!hecho.clavesLeidas) {
        std::cout
            << "Las claves viejas no se pueden leer: no se sabe qué registros no conocían. Están todos los "
               "vivos.\n";
    }
    std::cout << "registros en las claves: " << hecho.registros
              << "\nregistros adoptados: " << hecho.adoptados.size() << '\n';
    if (!hecho.anterior.empty()) std::cout << "claves anteriores: " << hecho.anterior << '\n';
    terminarSalida();
}

int reindexar(const TablaPedida& pedida) {
    const auto archivos = platform::crearSistemaArchivos();
    const auto definicion = pedida.leerDefinicion(*archivos);
    LineaProgreso linea;
    const auto alDiscrepar = [&](const data::Discrepancia& una) {
        linea.borrar();
        std::cout << data::frase(una) << '\n';
    };
    const auto hecho =
        data::reindexarTabla(*archivos, pedida.ruta, definicion, alDiscrepar, linea.comoFuncion());
    linea.borrar();
    switch (hecho.fin) {
        case Fin::enUso:
            return quejarse(pedida.ruta + ": otro programa la usa; no se ha cambiado nada", salida::enUso);
        case Fin::sinClaves:
            return quejarse(pedida.ruta + ": su definición no tiene claves", salida::fallo);
        case Fin::ajeno:
            return quejarse(
                data::rutaClavesDe(pedida.ruta) +
                    " tiene otro formato; no se ha cambiado nada. Si es el de esta tabla, apártelo y repita",
                salida::fallo);
        case Fin::hecho:
            break;
    }
    contar(hecho);
    return salida::hecho;
}

}  // namespace

void anadirReindexar(CLI::App& programa, TareaTabla& tarea) {
    const auto pedida = std::make_shared<TablaPedida>();
    auto* orden = programa.add_subcommand("reindexar", "Rehace las claves de una tabla");
    orden->footer(ayuda);
    pedida->anadirOpciones(*orden, "Tabla (.QZD)");
    orden->callback([pedida, &tarea] { tarea = [pedida] { return reindexar(*pedida); }; });
}

}  // namespace tarvoline::tools
