// tarvoline-copias: the backup manager on a command line, for servers and scripts.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>

#include "consola/ordenes.h"
#include "consola/progreso.h"
#include "core/carpetas.h"
#include "core/registro_spdlog.h"
#include "platform/senales.h"

namespace {

using namespace tarvoline;
using consola::Opciones;

constexpr const char* codigos =
    "Exit codes: 0 done; 1 could not start; 2 wrong command line; 3 refused or failed; 4 no such file;\n"
    "5 no user, or not known to the service; 11 another instance is running (pendientes);\n"
    "128+n ended by signal n.\n"
    "The password comes from --archivo-clave or the environment variable TARVOLINE_CLAVE, never from the "
    "command line.";

void declararComunes(CLI::App& app, Opciones& opciones) {
    app.add_option("-u,--usuario", opciones.usuario, "User of the service (otherwise the active company's)");
    app.add_option("--archivo-clave", opciones.archivoClave, "File whose first line is the user's password")
        ->check(CLI::ExistingFile);
    app.add_option("-e,--empresa", opciones.empresa, "Company file whose user is taken");
    app.add_option("-c,--carpeta", opciones.carpeta, "Folder of the service");
    app.add_flag("--crm", opciones.crm, "VXCRM in place of VELDORIX");
    app.add_flag("--json", opciones.json, "One JSON object on standard output");
    app.add_flag("-q,--silencio", opciones.silencio, "No progress line");
}

CLI::App* declarar(CLI::App& app, Opciones& opciones, const char* orden, const char* ayuda) {
    auto* sub = app.add_subcommand(orden, ayuda);
    sub->fallthrough();
    sub->callback([&opciones, orden] { opciones.orden = orden; });
    return sub;
}

void declararOrdenes(CLI::App& app, Opciones& opciones) {
    const auto conTipo = [&](CLI::App* sub) {
        sub->add_option("-t,--tipo", opciones.tipo, "Kind of content")
            ->check(CLI::IsMember({"empresas", "personales"}))
            ->capture_default_str();
        return sub;
    };
    const auto conNombres = [&](CLI::App* sub, const char* que) {
        sub->add_option("nombres", opciones.nombres, que)->required();
        return sub;
    };
    conTipo(declarar(app, opciones, "listar", "List what is stored"));
    auto* subir = conNombres(declarar(app, opciones, "subir", "Upload companies or personal files"),
                             "Company files (.QZT), or any files with --tipo personales");
    conTipo(subir)->add_flag("--imagenes", opciones.imagenes, "Pack the company's images too");
    declarar(app, opciones, "pendientes", "Upload the companies marked as pending, each under its own user");
    auto* restaurar =
        conNombres(declarar(app, opciones, "restaurar", "Restore stored companies"), "Stored names");
    restaurar->add_flag("--sobrescribir", opciones.sobrescribir,
                        "Over the company of that name (default: beside it)");
    auto* bajar =
        conNombres(conTipo(declarar(app, opciones, "bajar", "Download stored files")), "Stored names");
    bajar->add_option("-o,--destino", opciones.destino, "Where to write it (default: here, under its name)");
    bajar->add_flag("--sobrescribir", opciones.sobrescribir, "Over an existing file");
    conNombres(conTipo(declarar(app, opciones, "borrar", "Delete stored files")), "Stored names");
    declarar(app, opciones, "historico", "Who moved what");
    declarar(app, opciones, "espacio", "Space used and contracted");
}

void leerClave(Opciones& opciones) {
    if (!opciones.archivoClave.empty()) {
        std::ifstream entrada(opciones.archivoClave);
        std::getline(entrada, opciones.clave);
        if (!opciones.clave.empty() && opciones.clave.back() == '\r') {
            opciones.clave.pop_back();
        }
    } else if (const char* entorno = std::getenv("TARVOLINE_CLAVE"); entorno != nullptr) {
        opciones.clave = entorno;
    }
}

// Paths are meant from here, but the process moves when a company is opened.
void completarRutas(Opciones& opciones) {
    if (!opciones.empresa.empty()) {
        opciones.empresa = core::rutaCompleta(opciones.empresa);
    }
    if (opciones.orden == "subir") {
        std::ranges::transform(opciones.nombres, opciones.nombres.begin(), core::rutaCompleta);
    }
    if (opciones.orden == "bajar") {
        opciones.destino = core::rutaCompleta(opciones.destino);
    }
}

int ejecutar(const Opciones& opciones) {
    const platform::SenalesFin senales;
    const auto archivos = platform::crearSistemaArchivos();
    const auto registro = core::crearRegistro(*archivos, core::carpetaRegistro(), "copias", false);
    consola::EscritorioConsola escritorio(*registro, [&] { return senales.recibida(); });
    escritorio.mudo = true;
    workflows::Montaje montaje(escritorio, *registro);
    consola::Informe informe;
    {
        const consola::Progreso progreso(montaje.vista(), !opciones.silencio && !opciones.json);
        informe = consola::Ordenes(montaje, escritorio, opciones).ejecutar();
    }
    consola::escribir(std::cout, informe, opciones.json);
    if (!std::cout.flush()) {
        std::cerr << "tarvoline-copias: standard output cannot be written\n";
        return consola::salida::fallida;
    }
    const int senal = senales.recibida();
    return senal != 0 && informe.codigo != consola::salida::bien ? consola::salida::senal + senal
                                                                 : informe.codigo;
}

}  // namespace

int main(int argc, char** argv) {
    Opciones opciones;
    CLI::App app("The backup manager on a command line.", "tarvoline-copias");
    app.footer(codigos);
    app.require_subcommand(1);
    declararComunes(app, opciones);
    declararOrdenes(app, opciones);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? consola::salida::bien : consola::salida::uso;
    }
    try {
        leerClave(opciones);
        completarRutas(opciones);
        return ejecutar(opciones);
    } catch (const core::FinDePrograma& fin) {
        return fin.codigo;
    } catch (const std::exception& error) {
        std::cerr << "tarvoline-copias: " << error.what() << '\n';
        return consola::salida::noArranca;
    }
}
