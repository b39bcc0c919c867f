// qztabla plan: a chart that new companies may start with, from its readable source.
#include "core/carpetas.h"
#include "core/texto.h"
#include "data/fuente_plan.h"
#include "platform/arbol_ajustes.h"
#include "platform/carpetas_sistema.h"
#include "platform/reloj.h"
#include "qztabla.h"

namespace tarvoline::tools {

namespace {

constexpr const char* ayuda =
    "La fuente, una línea por dato (las que empiezan por # son comentarios):\n"
    "  57          Tesorería          uno a cuatro dígitos: cuenta de mayor de ese nivel\n"
    "  5700000000  Caja, euros        diez dígitos: subcuenta\n"
    "  cuentas de comun.plan          las cuentas de otra fuente de la misma carpeta\n"
    "La tabla tiene los campos de PLANC.QZA, de la carpeta del programa. Sus claves se dejan a su lado "
    "(.QZC).";

constexpr std::string_view tabla = "PLANC";
constexpr std::size_t largoNombre = tabla.size() + 2;
constexpr std::string_view extensionDatos = ".QZD";
constexpr std::string_view extensionClaves = ".QZC";

struct Destino {
    explicit Destino(const std::string& ruta) : partes(core::SepararRuta(ruta)) {
        const bool suyo = core::igualSinCaja(core::Mid(partes.nombre, 1, tabla.size()), tabla) &&
                          partes.nombre.size() == largoNombre && core::igualSinCaja(partes.extension, "QZD");
        if (!suyo) throw std::runtime_error(ruta + ": un plan se llama PLANCnn.QZD");
    }
    std::string conExtension(std::string_view extension) const {
        return partes.directorio + partes.nombre + std::string(extension);
    }
    // Suffix of the table that is made beside the plan and then takes its place.
    std::string sufijoNuevo() const { return partes.nombre.substr(tabla.size()) + ".nuevo"; }
    std::string nuevo(std::string_view extension) const {
        return partes.directorio + std::string(tabla) + sufijoNuevo() + std::string(extension);
    }

    core::PartesRuta partes;
};

void borrarSiEsta(platform::SistemaArchivos& archivos, const std::string& ruta) {
    if (platform::existe(archivos, ruta)) archivos.borrar(ruta);
}

void borrarNuevos(platform::SistemaArchivos& archivos, const Destino& destino) {
    borrarSiEsta(archivos, destino.nuevo(extensionDatos));
    borrarSiEsta(archivos, destino.nuevo(extensionClaves));
}

void grabar(platform::SistemaArchivos& archivos, const Destino& destino,
            const std::vector<data::CuentaPlan>& cuentas) {
    // Settings of nobody: the plan is the same whoever makes it.
    const auto arbol = platform::crearArbolAjustes(archivos, destino.conExtension(".ajustes"));
    core::Ajustes ajustes(*arbol);
    core::Carpetas carpetas(archivos, ajustes, platform::carpetaTemporal());
    const auto reloj = platform::crearReloj();
    data::CapaDatos capa{archivos, ajustes, carpetas, *reloj};
    data::Tablas tablas(capa);
    const auto sufijo = destino.sufijoNuevo();
    if (!tablas.AbrirTabla(data::tabla::planc, tabla, 1, destino.partes.directorio, sufijo)) {
        throw std::runtime_error("no se ha podido abrir " + destino.nuevo(extensionDatos));
    }
    data::grabarPlan(tablas, data::tabla::planc, cuentas);
    tablas.CerrarTodo();
}

void compilar(const std::string& fuente, const Destino& destino) {
    const auto archivos = platform::crearSistemaArchivos();
    const auto carpeta = core::SepararRuta(fuente).directorio;
    const auto cuentas = data::leerFuentePlan(
        fuente, platform::leerTodo(*archivos, fuente),
        [&](std::string_view otra) { return platform::leerTodo(*archivos, carpeta + std::string(otra)); });
    borrarNuevos(*archivos, destino);
    try {
        grabar(*archivos, destino, cuentas);
        // At no moment do the old keys stand beside the new records.
        borrarSiEsta(*archivos, destino.conExtension(extensionClaves));
        archivos->renombrar(destino.nuevo(extensionDatos), destino.conExtension(extensionDatos));
        archivos->renombrar(destino.nuevo(extensionClaves), destino.conExtension(extensionClaves));
    } catch (const std::exception&) {
        borrarNuevos(*archivos, destino);
        throw;
    }
}

}  // namespace

void anadirPlan(CLI::App& programa, TareaTabla& tarea) {
    struct Argumentos {
        std::string fuente, destino;
    };
    const auto argumentos = std::make_shared<Argumentos>();
    auto* orden = programa.add_subcommand("plan", "Compila un plan contable para empresas nuevas");
    orden->footer(ayuda);
    orden->add_option("FUENTE", argumentos->fuente, "Cuentas, en UTF-8")->required();
    orden->add_option("DESTINO", argumentos->destino, "Plan que se escribe (PLANCnn.QZD)")->required();
    orden->callback([argumentos, &tarea] {
        tarea = [argumentos] {
            compilar(argumentos->fuente, Destino(argumentos->destino));
            return 0;
        };
    });
}

}  // namespace tarvoline::tools
