// tarvoline-servicio: the backup service that a small office runs on its own server.
//
// Exit codes: 0 ended in order, 1 could not start or failed, 2 the command line is wrong.
#include <CLI/CLI.hpp>

#include <chrono>
#include <iostream>
#include <thread>

#include "core/linea_ordenes.h"
#include "core/registro_spdlog.h"
#include "platform/senales.h"
#include "server/mandato_usuario.h"
#include "server/servidor_embebido.h"

namespace {

using namespace tarvoline;

constexpr int fallo = 1;
constexpr int malaLinea = 2;

void declarar(CLI::App& programa, server::OpcionesServicio& opciones) {
    programa.add_option("--raiz", opciones.raiz, "carpeta de los datos del servicio");
    programa.add_option("--puerto", opciones.puerto, "puerto, de 0 a 65535; 0 = uno libre cualquiera")
        ->check(CLI::Range(0, 65535).description(""));
    programa.add_option("--direccion", opciones.direccion, "dirección en la que escucha")
        ->capture_default_str();
    programa.add_option("--certificado", opciones.certificado, "cadena de certificados (PEM)");
    programa.add_option("--clave-certificado", opciones.claveCertificado, "clave del certificado (PEM)");
    programa
        .add_option("--puerto-tls", opciones.puertoTls,
                    "puerto de las llamadas cifradas, de 0 a 65535; 0 = uno libre")
        ->check(CLI::Range(0, 65535).description(""));
    programa.add_flag("--sin-cifrar", opciones.sinCifrar, "escuchar en la red sin certificado");
}

CLI::App* declarar(CLI::App& programa, server::MandatoUsuario& mandato) {
    CLI::App* const usuario =
        programa.add_subcommand("usuario", "da de alta, cambia, da de baja o lista usuarios");
    usuario->add_option("--raiz", mandato.raiz, "carpeta de los datos del servicio")->required();
    auto* const que = usuario->add_option_group("qué");
    que->add_option("--alta", mandato.alta, "usuario nuevo");
    que->add_option("--modificar", mandato.modificar, "usuario que cambia");
    que->add_option("--baja", mandato.baja, "usuario que ya no puede entrar; sus copias se conservan");
    que->add_flag("--listar", mandato.listar, "todos los usuarios");
    que->require_option(1);
    usuario->add_option("--clave", mandato.clave, "clave de acceso; - la lee de la entrada estándar");
    usuario->add_option("--cuenta", mandato.cuenta, "código de cuenta");
    usuario->add_option("--gb", mandato.gb, "GB contratados por la cuenta; 0 = no se sabe");
    usuario->add_option("--etiqueta", mandato.etiqueta, "nombre que muestran los informes");
    usuario->add_option(
        "--tipo", mandato.tipo,
        "contabilidad: 00 administra la de su cuenta, 01 solo la suya [si es nuevo], 02 ninguna");
    return usuario;
}

void servir(const server::OpcionesServicio& opciones, platform::SistemaArchivos& archivos) {
    // Before any thread: a request to end that comes early is not lost.
    const platform::SenalesFin senales;
    const auto reloj = platform::crearReloj();
    const auto registro = core::crearRegistro(archivos, opciones.raiz + "/registro", "servicio");
    server::ServidorEmbebido servicio(opciones, archivos, *reloj, *registro);
    servicio.arrancar();
    std::cout << servicio.url() << std::endl;
    registro->info("en marcha: " + opciones.direccion + ", puerto " + std::to_string(servicio.puerto()) +
                   (opciones.conTls() ? ", cifrado " + std::to_string(servicio.puertoTls()) : ""));
    if (servicio.usuarios().todos().empty()) {
        registro->info("todavía no hay usuarios; para crear uno: tarvoline-servicio usuario --raiz \"" +
                       opciones.raiz + "\" --alta USUARIO --clave CLAVE --cuenta CODIGO --gb N");
    }
    while (senales.recibida() == 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    registro->info("petición de fin: se terminan las llamadas en curso");
    servicio.detener();
    registro->info("fin");
}

int correr(int argc, char** argv) {
    server::OpcionesServicio opciones;
    server::MandatoUsuario mandato;
    CLI::App programa("Servicio de copias de Tarvoline", "tarvoline-servicio");
    core::hablarEspanol(programa);
    declarar(programa, opciones);
    const CLI::App* const usuario = declarar(programa, mandato);
    try {
        programa.parse(argc, argv);
        if (!usuario->parsed() && opciones.raiz.empty()) throw CLI::RequiredError("--raiz");
    } catch (const CLI::ParseError& error) {
        return programa.exit(error) == 0 ? 0 : malaLinea;
    }
    const auto archivos = platform::crearSistemaArchivos();
    if (usuario->parsed()) {
        server::ejecutar(mandato, *archivos);
    } else {
        servir(opciones, *archivos);
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return correr(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "tarvoline-servicio: " << error.what() << '\n';
        return fallo;
    }
}
