// tarvoline-demo: makes a company on disk that looks like a small bakery's books, with everything that a copy
// of it must carry: a year of entries, scanned images, an attached folder, its backup configuration. And
// compares two companies as the accounting link reads them.

#include <CLI/CLI.hpp>
#include <iostream>

#include "core/carpetas.h"
#include "core/linea_ordenes.h"
#include "core/texto.h"
#include "platform/reloj.h"
#include "tarvoline/enlace.h"
#include "tools/demo_archivos.h"
#include "tools/demo_comparar.h"
#include "tools/demo_libros.h"
#include "tools/taller_enlace.h"

namespace {

using namespace tarvoline;

struct Encargo {
    std::string carpeta;
    std::string nombre = "Panadería Núñez";
    std::string adjuntos;
    std::uint64_t semilla = 1;
    int anio = 0;
    int operaciones = 400, terceros = 60;
    int kbImagenes = 6000, kbAdjuntos = 800;
    std::string usuario = "panaderia", clave = "masa1234", carpetaServicio = "DATOS";
};

// Analytic accounts of four characters below parents of one.
constexpr const char* nivelesAnalitica = "10004";

void contar(const std::string& que, const std::string& donde, std::size_t bytes) {
    std::cout << que << ": " << donde << " (" << bytes << " bytes)\n";
}

std::size_t contarCarpeta(const std::string& que, const std::string& carpeta,
                          const std::vector<tools::ArchivoDemo>& hechos) {
    std::size_t bytes = 0;
    for (const auto& hecho : hechos) {
        bytes += hecho.longitud;
    }
    contar(que + ", " + std::to_string(hechos.size()) + " archivos", carpeta, bytes);
    return bytes;
}

std::size_t crearAcompanantes(tools::TallerEnlace& taller, tools::Azar& azar, const Encargo& encargo,
                              const std::string& carpetaImagenes) {
    constexpr std::size_t kb = 1024;
    return contarCarpeta("imágenes", carpetaImagenes,
                         tools::crearImagenes(taller.archivos(), azar, carpetaImagenes,
                                              static_cast<std::size_t>(encargo.kbImagenes) * kb)) +
           contarCarpeta("adjuntos", encargo.adjuntos,
                         tools::crearAdjuntos(taller.archivos(), azar, encargo.adjuntos,
                                              static_cast<std::size_t>(encargo.kbAdjuntos) * kb));
}

void configurar(tools::TallerEnlace& taller, link::Enlace& enlace, const Encargo& encargo) {
    enlace.Config("TVUSER", encargo.usuario);
    enlace.Config("TVPASSWORD", encargo.clave);
    enlace.Config("TVCARPETA", encargo.carpetaServicio);
    enlace.Config("Borrador", "1");
    enlace.Config("ADJUNTARCARPETAS0", taller.archivos().resolver(encargo.adjuntos));
}

void crearEmpresa(link::Enlace& enlace, const Encargo& encargo) {
    enlace.CrearEmpresa({.NombreEmpresa = encargo.nombre,
                         .año = core::conCeros(encargo.anio % 100, 2),
                         .PlanContablePorDefecto = "1"});
    const std::string empresa = enlace.Empresa();
    enlace.AbrirEmpresa(empresa);
    enlace.Config("NivelesCosto", nivelesAnalitica);
    enlace.Config("iva2", "4770000021,4720000021");
    enlace.AbrirEmpresa(empresa);
}

void ejecutar(const Encargo& encargo) {
    const auto carpeta = core::conSeparadorFinal(core::rutaCompleta(encargo.carpeta));
    tools::TallerEnlace taller(carpeta);
    taller.archivos().crearDirectorios(carpeta);
    tools::Azar azar(encargo.semilla);
    link::Enlace enlace(taller.contexto());
    crearEmpresa(enlace, encargo);
    taller.ponerGlobales(carpeta);
    const int asientos =
        tools::LibrosDemo(enlace, azar, {encargo.anio, encargo.operaciones, encargo.terceros}).contabilizar();
    std::cout << "asientos: " << asientos << '\n';
    const auto partes = core::SepararRuta(enlace.Empresa());
    const auto bytes = crearAcompanantes(taller, azar, encargo, partes.directorio + partes.nombre);
    configurar(taller, enlace, encargo);
    std::cout << "empresa " << enlace.NumeroEmpresa() << ": " << enlace.Empresa() << '\n'
              << "acompañantes: " << bytes << " bytes, semilla " << encargo.semilla << '\n';
}

// 0 equal, 1 different.
int comparar(const std::string& una, const std::string& otra) {
    tools::TallerEnlace taller(core::SepararRuta(core::rutaCompleta(una)).directorio);
    link::Enlace primera(taller.contexto());
    link::Enlace segunda(taller.contexto());
    const std::string rutaOtra = core::rutaCompleta(otra);
    primera.AbrirEmpresa(core::rutaCompleta(una));
    segunda.AbrirEmpresa(rutaOtra);
    const auto hecha = tools::compararLibros(primera, segunda);
    std::cout << hecha.asientos << " asientos, " << hecha.apuntes << " apuntes, " << hecha.cuentas
              << " extractos y " << hecha.filas << " filas iguales\n";
    if (hecha.diferencia) std::cout << "distinto: " << *hecha.diferencia << '\n';
    return hecha.diferencia ? 1 : 0;
}

void declararOpciones(CLI::App& programa, Encargo& encargo) {
    programa.add_option("--carpeta", encargo.carpeta, "Carpeta de la empresa; se crea si falta");
    programa.add_option("--nombre", encargo.nombre, "Nombre de la empresa")->capture_default_str();
    programa.add_option("--adjuntos", encargo.adjuntos,
                        "Carpeta adjunta [\"Documentación\" junto a la carpeta]");
    programa.add_option("--semilla", encargo.semilla, "Semilla; con la misma salen los mismos registros")
        ->capture_default_str();
    programa.add_option("--anio", encargo.anio, "Año contable, de 2000 a 2059 [este año]")
        ->check(CLI::Range(2000, 2059).description(""));
    programa.add_option("--operaciones", encargo.operaciones, "Compras y ventas; les siguen cobros y pagos")
        ->capture_default_str();
    programa.add_option("--terceros", encargo.terceros, "Clientes y proveedores")->capture_default_str();
    programa.add_option("--kb-imagenes", encargo.kbImagenes, "Tamaño de las imágenes")->capture_default_str();
    programa.add_option("--kb-adjuntos", encargo.kbAdjuntos, "Tamaño de la carpeta adjunta")
        ->capture_default_str();
    programa.add_option("--usuario", encargo.usuario, "Usuario de copias de la empresa")
        ->capture_default_str();
    programa.add_option("--clave", encargo.clave, "Clave de copias de la empresa")->capture_default_str();
    programa.add_option("--carpeta-servicio", encargo.carpetaServicio, "Carpeta en el servicio")
        ->capture_default_str();
}

constexpr int malaLinea = 2;

int correr(int argc, char** argv) {
    CLI::App programa("Crea en disco una empresa de demostración", "tarvoline-demo");
    core::hablarEspanol(programa);
    Encargo encargo;
    declararOpciones(programa, encargo);
    std::string una, otra;
    auto* comparacion =
        programa.add_subcommand("comparar", "Compara dos empresas, asiento por asiento; 0: iguales");
    comparacion->add_option("UNA", una, "Archivo de una empresa (.QZT)")->required();
    comparacion->add_option("OTRA", otra, "Archivo de la otra")->required();
    try {
        programa.parse(argc, argv);
        if (!*comparacion && encargo.carpeta.empty()) throw CLI::RequiredError("--carpeta");
    } catch (const CLI::ParseError& error) {
        return programa.exit(error) == 0 ? 0 : malaLinea;
    }
    if (*comparacion) return comparar(una, otra);
    if (encargo.anio == 0) encargo.anio = platform::crearReloj()->local().anio;
    if (encargo.adjuntos.empty()) {
        const auto carpeta = core::SepararRuta(core::conSeparadorFinal(encargo.carpeta)).directorio;
        encargo.adjuntos = carpeta.substr(0, carpeta.size() - 1) + " - Documentación";
    }
    ejecutar(encargo);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return correr(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "tarvoline-demo: " << error.what() << '\n';
        return 1;
    }
}
