// tarvoline-ajustes: reads and writes the settings tree on a command line. Accounting programs and
// administrators mark companies as pending with it, choose the service and see what is set.

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "core/ajustes.h"
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
    "Exit codes: 0 done; 1 no such setting; 2 wrong command line; 3 the settings cannot be read or written,\n"
    "or the output cannot.\n"
    "Without a product the tree is Veldorix, without a section it is Settings. Names compare without regard\n"
    "to case. A value that begins with \"-\" stands behind \"--\": grabar KEY -- -value.\n"
    "The settings hold passwords: their file is readable by its owner only.";

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
                std::cerr << "tarvoline-ajustes: not understood: " << linea << '\n';
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
    sub->add_option("-s,--seccion", orden.seccion, "Section");
    sub->add_option("-p,--producto", orden.producto, "Product: VELDORIX or VXCRM");
    sub->callback([&orden, nombre] { orden.nombre = nombre; });
    return sub;
}

void declararOrdenes(CLI::App& programa, Orden& orden) {
    auto* lectura = declarar(programa, orden, "leer", "Print a value");
    lectura->add_option("clave", orden.clave, "Key")->required();
    lectura->add_option("-d,--defecto", orden.defecto, "Printed when there is no value");
    lectura->add_flag("-m,--maquina", orden.maquina,
                      "Look among the machine's settings when the user has none");

    auto* escritura = declarar(programa, orden, "grabar", "Store a value; an empty one means \"no value\"");
    escritura->add_option("clave", orden.clave, "Key")->required();
    escritura->add_option("valor", orden.valor, "Value")->required();

    auto* borrado = declarar(programa, orden, "borrar", "Remove a key");
    borrado->add_option("clave", orden.clave, "Key")->required();

    auto* lista =
        declarar(programa, orden, "listar", "Print all values, one product\\section\\key=value a line");
    lista->add_flag("-m,--maquina", orden.maquina, "The machine's settings in place of the user's");
    lista->add_flag("--json", orden.json, "One JSON array of objects: producto, seccion, clave, valor");
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

}  // namespace

int main(int argc, char** argv) {
    CLI::App programa("Settings of Tarvoline and of the accounting programs", "tarvoline-ajustes");
    programa.footer(codigos);
    programa.require_subcommand(1);
    Orden orden;
    declararOrdenes(programa, orden);
    try {
        programa.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return programa.exit(error) == 0 ? salida::hecho : salida::ordenMala;
    }
    try {
        const int codigo = ejecutar(orden);
        std::cout.flush();
        return std::cout ? codigo : salida::sinAjustes;
    } catch (const std::exception& error) {
        std::cerr << "tarvoline-ajustes: " << error.what() << '\n';
        return salida::sinAjustes;
    }
}
