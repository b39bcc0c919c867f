// tarvoline-demo: makes a company on disk that looks like a small bakery's books, with everything that a copy
// of it must carry: tables, scanned images, an attached folder, its backup configuration.

#include <CLI/CLI.hpp>
#include <iostream>

#include "core/carpetas.h"
#include "data/crear_empresa.h"
#include "data/vista_nombrada.h"
#include "platform/reloj.h"
#include "tools/demo_archivos.h"
#include "tools/demo_registros.h"
#include "tools/taller.h"

namespace {

using namespace tarvoline;

struct Encargo {
    std::string carpeta;
    std::string nombre = "Panadería Núñez";
    std::string adjuntos;
    std::uint64_t semilla = 1;
    int anio = 0;
    int apuntes = 11000, terceros = 1500, facturas = 2000;
    int kbImagenes = 3000, kbAdjuntos = 800;
    std::string usuario = "panaderia", clave = "masa1234", carpetaServicio = "DATOS";
};

using tools::Taller;

void contar(const std::string& que, const std::string& donde, std::size_t bytes) {
    std::cout << que << ": " << donde << " (" << bytes << " bytes)\n";
}

std::size_t llenarTabla(Taller& taller, const std::string& nombre, const std::string& registros) {
    const auto& empresa = taller.capa().enVigor;
    const auto ruta = empresa.gDirectorioEmpresa + nombre + empresa.gEmpresaActual + ".QZD";
    taller.archivos()
        .abrir(ruta, platform::Apertura::escritura, platform::Comparticion::compartida)
        ->escribir(0, platform::comoBytes(registros));
    contar("tabla " + nombre, ruta, registros.size());
    return registros.size();
}

void crearEmpresa(Taller& taller, const Encargo& encargo) {
    const auto carpeta = core::conSeparadorFinal(encargo.carpeta);
    taller.archivos().crearDirectorios(carpeta);
    auto& enVigor = taller.capa().enVigor;
    enVigor.gArchivoEmpresa = data::CrearEmpresaArchivos(taller.capa(), carpeta + encargo.nombre,
                                                         "/C/A=" + core::conCeros(encargo.anio % 100, 2));
    enVigor.gEmpresaActual = data::NumeroEmpresa(taller.archivos(), enVigor.gArchivoEmpresa);
    enVigor.gDirectorioEmpresa = carpeta;
}

std::size_t llenarTablas(Taller& taller, tools::Azar& azar, const Encargo& encargo) {
    return llenarTabla(taller, "EXTRA", tools::tablaApuntes(azar, encargo.anio, encargo.apuntes)) +
           llenarTabla(taller, "DATOS", tools::tablaTerceros(azar, encargo.terceros)) +
           llenarTabla(taller, "IVA01", tools::tablaFacturas(azar, encargo.anio, encargo.facturas));
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

std::size_t crearAcompanantes(Taller& taller, tools::Azar& azar, const Encargo& encargo,
                              const std::string& carpetaImagenes) {
    constexpr std::size_t kb = 1024;
    return contarCarpeta("imágenes", carpetaImagenes,
                         tools::crearImagenes(taller.archivos(), azar, carpetaImagenes,
                                              static_cast<std::size_t>(encargo.kbImagenes) * kb)) +
           contarCarpeta("adjuntos", encargo.adjuntos,
                         tools::crearAdjuntos(taller.archivos(), azar, encargo.adjuntos,
                                              static_cast<std::size_t>(encargo.kbAdjuntos) * kb));
}

void configurar(Taller& taller, const Encargo& encargo) {
    data::VistaNombrada vista(taller.capa());
    vista.PutTotal("TVUSER", encargo.usuario);
    vista.PutTotal("TVPASSWORD", encargo.clave);
    vista.PutTotal("TVCARPETA", encargo.carpetaServicio);
    vista.PutTotal("Borrador", "1");
    vista.PutTotal("ADJUNTARCARPETAS0", taller.archivos().resolver(encargo.adjuntos));
}

void ejecutar(const Encargo& encargo) {
    Taller taller;
    tools::Azar azar(encargo.semilla);
    crearEmpresa(taller, encargo);
    const auto& empresa = taller.capa().enVigor;
    const auto partes = core::SepararRuta(empresa.gArchivoEmpresa);
    const auto bytes = llenarTablas(taller, azar, encargo) +
                       crearAcompanantes(taller, azar, encargo, partes.directorio + partes.nombre);
    configurar(taller, encargo);
    std::cout << "empresa " << empresa.gEmpresaActual << ": " << empresa.gArchivoEmpresa << '\n'
              << "total: " << bytes << " bytes, semilla " << encargo.semilla << '\n';
}

void declararOpciones(CLI::App& programa, Encargo& encargo) {
    programa.add_option("--carpeta", encargo.carpeta, "Carpeta de la empresa; se crea si falta")->required();
    programa.add_option("--nombre", encargo.nombre, "Nombre de la empresa")->capture_default_str();
    programa.add_option("--adjuntos", encargo.adjuntos,
                        "Carpeta adjunta [\"Documentación\" junto a la carpeta]");
    programa.add_option("--semilla", encargo.semilla, "Semilla; con la misma salen los mismos registros")
        ->capture_default_str();
    programa.add_option("--anio", encargo.anio, "Año contable [este año]")->check(CLI::Range(2000, 2059));
    programa.add_option("--apuntes", encargo.apuntes, "Apuntes del diario")->capture_default_str();
    programa.add_option("--terceros", encargo.terceros, "Clientes y proveedores")->capture_default_str();
    programa.add_option("--facturas", encargo.facturas, "Facturas")->capture_default_str();
    programa.add_option("--kb-imagenes", encargo.kbImagenes, "Tamaño de las imágenes")->capture_default_str();
    programa.add_option("--kb-adjuntos", encargo.kbAdjuntos, "Tamaño de la carpeta adjunta")
        ->capture_default_str();
    programa.add_option("--usuario", encargo.usuario, "Usuario de copias de la empresa")
        ->capture_default_str();
    programa.add_option("--clave", encargo.clave, "Clave de copias de la empresa")->capture_default_str();
    programa.add_option("--carpeta-servicio", encargo.carpetaServicio, "Carpeta en el servicio")
        ->capture_default_str();
}

int correr(int argc, char** argv) {
    CLI::App programa("Crea en disco una empresa de demostración");
    Encargo encargo;
    declararOpciones(programa, encargo);
    CLI11_PARSE(programa, argc, argv);
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
