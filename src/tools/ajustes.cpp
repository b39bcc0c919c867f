// tarvoline-ajustes: reads and writes the settings tree on a command line. Accounting programs and
// administrators mark companies as pending with it, choose the service and see what is set.

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "core/ajustes.h"
#include "core/linea_ordenes.h"
#include "core/texto.h"
#include "platform/arbol_ajustes.h"
#include "platform/archivos.h"
#include "platform/carpetas_sistema.h"

namespace {

using namespace tarvoline;

namespace salida {
constexpr int hecho = 0;
constexpr int noEsta = 1;
constexpr int ordenMala = 2;
constexpr int sinAjustes = 3;
}  // namespace salida

constexpr const char* codigos =
    "Códigos de salida: 0 hecho; 1 no hay tal ajuste; 2 línea de órdenes incorrecta; 3 no se pueden leer o\n"
    "guardar los ajustes, o falla la salida.\n"
    "Sin producto el árbol es Veldorix, sin sección es Settings. Los nombres no distinguen mayúsculas. Un "
    "valor\n"
    "que empieza por \"-\" va detrás de \"--\": grabar CLAVE -- -valor.\n"
    "Los ajustes contienen claves: su archivo solo lo lee su dueño.";

struct Orden {
    std::string nombre;
    std::string clave, valor, seccion, producto;
    std::optional<std::string> defecto;
    bool maquina = false;
    bool json = false;
};

// The user's settings, and those of all users of the machine.
class Almacenes {
  public:
    Almacenes()
        : archivos_(platform::crearSistemaArchivos()),
          usuario_(platform::crearArbolAjustes(*archivos_, en(platform::carpetaConfiguracion()))),
          maquina_(platform::crearArbolMaquina(*archivos_, en(platform::carpetaConfiguracionMaquina()))) {}

    platform::ArbolAjustes& usuario() { return *usuario_; }
    platform::ArbolAjustes& maquina() { return *maquina_; }
    // Lines of both files that could not be understood; they stay as they are.
    void advertir() {
        for (auto* arbol : {usuario_.get(), maquina_.get()}) {
            for (const std::string& linea : arbol->lineasOmitidas()) {
                std::cerr << "tarvoline-ajustes: no se entiende: " << linea << '\n';
            }
        }
    }

  private:
    static std::string en(const std::string& carpeta) {
        const char s = platform::separador;
        return carpeta + s + "QZ" + s + "ajustes.ini";
    }

    std::unique_ptr<platform::SistemaArchivos> archivos_;
    std::unique_ptr<platform::ArbolAjustes> usuario_;
    std::unique_ptr<platform::ArbolAjustes> maquina_;
};

int leer(Almacenes& almacenes, const Orden& orden) {
    core::Ajustes ajustes(almacenes.usuario(), &almacenes.maquina());
    ajustes.usarMaquina(orden.maquina);
    const std::string valor =
        ajustes.leer(orden.clave, orden.seccion, orden.defecto.value_or(""), orden.producto);
    if (valor.empty() && !orden.defecto) {
        return salida::noEsta;
    }
    std::cout << valor << '\n';
    return salida::hecho;
}

int grabar(Almacenes& almacenes, const Orden& orden) {
    core::Ajustes(almacenes.usuario())
        .GrabarRegistro(orden.clave, orden.valor, orden.seccion, orden.producto);
    return salida::hecho;
}

// Removes the key itself, where the program only ever empties it.
int borrar(Almacenes& almacenes, const Orden& orden) {
    const auto donde = core::Ajustes::donde(orden.clave, orden.seccion, orden.producto);
    if (!almacenes.usuario().leer(donde)) {
        return salida::noEsta;
    }
    almacenes.usuario().borrar(donde);
    return salida::hecho;
}

// A value on one line, whatever it holds.
std::string enUnaLinea(const std::string& valor) {
    return core::Sustituir(core::Sustituir(valor, "\r", "\\r"), "\n", "\\n");
}

int listar(Almacenes& almacenes, const Orden& orden) {
    auto lista = nlohmann::json::array();
    for (const auto& [donde, valor] : (orden.maquina ? almacenes.maquina() : almacenes.usuario()).listar()) {
        const bool pedido = (orden.seccion.empty() || core::igualSinCaja(orden.seccion, donde.seccion)) &&
                            (orden.producto.empty() || core::igualSinCaja(orden.producto, donde.producto));
        if (!pedido) {
            continue;
        }
        if (orden.json) {
            lista.push_back({{"producto", donde.producto},
                             {"seccion", donde.seccion},
                             {"clave", donde.clave},
                             {"valor", valor}});
        } else {
            std::cout << donde.producto << '\\' << donde.seccion << '\\' << donde.clave << '='
                      << enUnaLinea(valor) << '\n';
        }
    }
    if (orden.json) {
        std::cout << lista.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
    }
    return salida::hecho;
}

CLI::App* declarar(CLI::App& programa, Orden& orden, const char* nombre, const char* ayuda) {
    auto* sub = programa.add_subcommand(nombre, ayuda);
    sub->add_option("-s,--seccion", orden.seccion, "Sección");
    sub->add_option("-p,--producto", orden.producto, "Producto: VELDORIX o VXCRM");
    sub->callback([&orden, nombre] { orden.nombre = nombre; });
    return sub;
}

void declararOrdenes(CLI::App& programa, Orden& orden) {
    auto* lectura = declarar(programa, orden, "leer", "Escribe un valor en la salida");
    lectura->add_option("clave", orden.clave, "Clave")->required();
    lectura->add_option("-d,--defecto", orden.defecto, "Lo que se escribe cuando no hay valor");
    lectura->add_flag("-m,--maquina", orden.maquina,
                      "Busca entre los ajustes de la máquina cuando el usuario no lo tiene");

    auto* escritura =
        declarar(programa, orden, "grabar", "Guarda un valor; uno vacío quiere decir \"sin valor\"");
    escritura->add_option("clave", orden.clave, "Clave")->required();
    escritura->add_option("valor", orden.valor, "Valor")->required();

    auto* borrado = declarar(programa, orden, "borrar", "Quita una clave");
    borrado->add_option("clave", orden.clave, "Clave")->required();

    auto* lista = declarar(programa, orden, "listar",
                           "Escribe todos los valores, uno por línea: producto\\sección\\clave=valor");
    lista->add_flag("-m,--maquina", orden.maquina, "Los ajustes de la máquina en lugar de los del usuario");
    lista->add_flag("--json", orden.json, "Una lista JSON de objetos: producto, seccion, clave, valor");
}

int ejecutar(const Orden& orden) {
    Almacenes almacenes;
    int codigo = salida::hecho;
    if (orden.nombre == "leer") {
        codigo = leer(almacenes, orden);
    } else if (orden.nombre == "grabar") {
        codigo = grabar(almacenes, orden);
    } else if (orden.nombre == "borrar") {
        codigo = borrar(almacenes, orden);
    } else {
        codigo = listar(almacenes, orden);
    }
    almacenes.advertir();
    return codigo;
}

int correr(int argc, char** argv) {
    CLI::App programa("Ajustes de Tarvoline y de los programas contables", "tarvoline-ajustes");
    core::hablarEspanol(programa);
    programa.footer(codigos);
    programa.require_subcommand(1);
    Orden orden;
    declararOrdenes(programa, orden);
    try {
        programa.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return programa.exit(error) == 0 ? salida::hecho : salida::ordenMala;
    }
    const int codigo = ejecutar(orden);
    std::cout.flush();
    return std::cout ? codigo : salida::sinAjustes;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return correr(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "tarvoline-ajustes: " << error.what() << '\n';
        return salida::sinAjustes;
    }
}
