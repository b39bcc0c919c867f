// tarvoline-copias: the backup manager on a command line, for servers and scripts.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>

#include "consola/ordenes.h"
#include "consola/progreso.h"
#include "core/carpetas.h"
#include "core/linea_ordenes.h"
#include "core/registro_spdlog.h"
#include "platform/senales.h"

namespace {

using namespace tarvoline;
using consola::Opciones;

constexpr const char* codigos =
    "Códigos de salida: 0 hecho; 1 no ha podido empezar; 2 línea de órdenes incorrecta; 3 rechazado o "
    "fallido;\n"
    "4 no existe ese archivo; 5 sin usuario, o desconocido para el servicio; 11 hay otra copia del programa "
    "en\n"
    "marcha (pendientes); 128+n terminado por la señal n.\n"
    "La clave viene de --archivo-clave o de la variable de entorno TARVOLINE_CLAVE, nunca de la línea de "
    "órdenes.";

void declararComunes(CLI::App& app, Opciones& opciones) {
    app.add_option("-u,--usuario", opciones.usuario, "Usuario del servicio (si no, el de la empresa activa)");
    app.add_option("--archivo-clave", opciones.archivoClave,
                   "Archivo cuya primera línea es la clave del usuario")
        ->check(CLI::Validator(CLI::ExistingFile).description(""));
    app.add_option("-e,--empresa", opciones.empresa, "Archivo de la empresa cuyo usuario se toma");
    app.add_option("-c,--carpeta", opciones.carpeta, "Carpeta del servicio");
    app.add_flag("--crm", opciones.crm, "VXCRM en lugar de VELDORIX");
    app.add_flag("--json", opciones.json, "Un objeto JSON en la salida estándar");
    app.add_flag("-q,--silencio", opciones.silencio, "Sin línea de progreso");
}

CLI::App* declarar(CLI::App& app, Opciones& opciones, const char* orden, const char* ayuda) {
    auto* sub = app.add_subcommand(orden, ayuda);
    sub->fallthrough();
    sub->callback([&opciones, orden] { opciones.orden = orden; });
    return sub;
}

void declararOrdenes(CLI::App& app, Opciones& opciones) {
    const auto conTipo = [&](CLI::App* sub) {
        sub->add_option("-t,--tipo", opciones.tipo, "Clase de contenido: empresas o personales")
            ->check(CLI::IsMember({"empresas", "personales"}).description(""))
            ->capture_default_str();
        return sub;
    };
    const auto conNombres = [&](CLI::App* sub, const char* que) {
        sub->add_option("nombres", opciones.nombres, que)->required();
        return sub;
    };
    conTipo(declarar(app, opciones, "listar", "Lista lo que está guardado"));
    auto* subir = conNombres(declarar(app, opciones, "subir", "Sube empresas o archivos personales"),
                             "Archivos de empresa (.QZT), o cualesquiera con --tipo personales");
    conTipo(subir)->add_flag("--imagenes", opciones.imagenes, "Incluye las imágenes de la empresa");
    declarar(app, opciones, "pendientes", "Sube las empresas pendientes, cada una con su usuario");
    auto* restaurar =
        conNombres(declarar(app, opciones, "restaurar", "Restaura empresas guardadas"), "Nombres guardados");
    restaurar->add_flag("--sobrescribir", opciones.sobrescribir,
                        "Encima de la empresa de ese nombre (si no, junto a ella)");
    auto* bajar =
        conNombres(conTipo(declarar(app, opciones, "bajar", "Baja archivos guardados")), "Nombres guardados");
    bajar->add_option("-o,--destino", opciones.destino, "Dónde se escribe (si no, aquí y con su nombre)");
    bajar->add_flag("--sobrescribir", opciones.sobrescribir, "Encima de un archivo que ya existe");
    conNombres(conTipo(declarar(app, opciones, "borrar", "Borra archivos guardados")), "Nombres guardados");
    declarar(app, opciones, "historico", "Quién ha movido qué");
    declarar(app, opciones, "espacio", "Espacio ocupado y contratado");
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

int correr(int argc, char** argv) {
    Opciones opciones;
    CLI::App app("El gestor de copias en la línea de órdenes.", "tarvoline-copias");
    core::hablarEspanol(app);
    app.footer(codigos);
    app.require_subcommand(1);
    declararComunes(app, opciones);
    declararOrdenes(app, opciones);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? consola::salida::bien : consola::salida::uso;
    }
    leerClave(opciones);
    completarRutas(opciones);
    return ejecutar(opciones);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return correr(argc, argv);
    } catch (const core::FinDePrograma& fin) {
        return fin.codigo;
    } catch (const std::exception& error) {
        std::cerr << "tarvoline-copias: " << error.what() << '\n';
        return consola::salida::noArranca;
    }
}
