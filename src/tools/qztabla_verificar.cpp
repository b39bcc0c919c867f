// qztabla verificar: whether a table and its keys are sound.
#include <iostream>

#include "core/carpetas.h"
#include "core/texto.h"
#include "qztabla.h"
#include "qztabla_empresa.h"
#include "qztabla_tabla.h"

namespace tarvoline::tools {

namespace {

constexpr const char* ayuda =
    "Lee la tabla y su archivo de claves (.QZC), sin cambiar nada; otros programas pueden seguir trabajando\n"
    "con ella. Comprueba que los registros llegan justo al final del archivo, que el archivo de claves está\n"
    "sano y en orden, y que cada registro vivo está una vez en cada clave, con el texto que dicen sus "
    "campos,\n"
    "y ninguno más. Escribe cada discrepancia con su registro, las cuentas y el SHA-256 de lo que escribe\n"
    "\"qztabla volcar\".\n"
    "De una empresa (.QZT) comprueba así sus nueve tablas y, además, que las columnas de cada cuenta y "
    "mayor,\n"
    "CARGOSA, ABONOSA y el contador de la analítica son los de los apuntes. Nombra los asientos que no\n"
    "cuadran, que no son discrepancias: pueden haberse grabado así.\n"
    "Salida: 0 sana, 1 hay discrepancias, 2 argumentos malos, 3 no se puede leer.";

int verificarUna(const TablaPedida& pedida) {
    const auto archivos = platform::crearSistemaArchivos();
    data::TablaSuelta tabla(*archivos, pedida.ruta, pedida.leerDefinicion(*archivos));
    LineaProgreso linea;
    const auto alDiscrepar = [&](const data::Discrepancia& una) {
        linea.borrar();
        std::cout << data::frase(una) << '\n';
    };
    const auto verificacion = data::verificarTabla(*archivos, tabla, alDiscrepar, linea.comoFuncion());
    linea.borrar();
    imprimir(verificacion, std::cout);
    terminarSalida();
    return verificacion.sana() ? salida::hecho : salida::fallo;
}

bool esEmpresa(const std::string& ruta) {
    return core::igualSinCaja(core::SepararRuta(ruta).extension, "QZT");
}

}  // namespace

void anadirVerificar(CLI::App& programa, TareaTabla& tarea) {
    const auto pedida = std::make_shared<TablaPedida>();
    auto* orden =
        programa.add_subcommand("verificar", "Comprueba una tabla y sus claves, o una empresa entera");
    orden->footer(ayuda);
    pedida->anadirOpciones(*orden, "Tabla (.QZD) o empresa (.QZT)");
    orden->callback([pedida, &tarea] {
        tarea = [pedida] {
            try {
                return esEmpresa(pedida->ruta) ? verificarEmpresa(pedida->ruta) : verificarUna(*pedida);
            } catch (const std::exception& error) {
                std::cout.flush();
                std::cerr << "qztabla: " << error.what() << '\n';
                return salida::ilegible;
            }
        };
    });
}

}  // namespace tarvoline::tools
