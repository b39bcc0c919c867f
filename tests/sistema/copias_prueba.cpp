// tarvoline-copias as a person and as a script meet it.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "apoyo/servicio_guion.h"
#include "apoyo/servicio_proceso.h"
#include "sistema/casa.h"

namespace tarvoline {
namespace {

using Json = nlohmann::json;

class Copias : public ::testing::Test {
  protected:
    Copias() { casa.variables().poner("TARVOLINE_CLAVE", "Ana2024"); }
    void conServicio() {
        servicio.emplace();
        servicio->alta("ana", "Ana2024", "C0001");
        casa.grabar("IP", servicio->anfitrion());
    }
    pruebas::Salida copias(std::vector<std::string> argumentos) {
        argumentos.insert(argumentos.begin(), {"-u", "ana"});
        return casa.correr("tarvoline-copias", argumentos);
    }
    // Runs with --json and expects that exit code, on the wire and in the answer.
    Json json(std::vector<std::string> argumentos, int codigo = 0) {
        argumentos.push_back("--json");
        const auto salida = copias(argumentos);
        EXPECT_EQ(salida.codigo, codigo) << salida.errores;
        const auto objeto = Json::parse(salida.texto);
        EXPECT_EQ(objeto["codigo"], codigo);
        EXPECT_EQ(objeto["motivo"] == "", codigo == 0) << objeto["motivo"];
        return objeto;
    }

    pruebas::Casa casa;
    std::optional<pruebas::ServicioProceso> servicio;
};

TEST_F(Copias, UnaEmpresaSubeSeListaYVuelve) {
    conServicio();
    const auto ruta = casa.crearEmpresa("Panadería Núñez", "ana", "Ana2024", 1);
    auto salida = copias({"subir", ruta});
    EXPECT_EQ(salida.codigo, 0);
    EXPECT_EQ(salida.texto, "Subido: " + ruta + "\n");
    EXPECT_EQ(salida.errores, "");

    const auto lista = json({"listar"});
    ASSERT_EQ(lista["archivos"].size(), 1U);
    const std::string nombre = lista["archivos"][0]["nombre"];
    EXPECT_EQ(nombre.rfind("PANADERÍA NÚÑEZ 20", 0), 0U);
    EXPECT_EQ(lista["total"], lista["archivos"][0]["bytes"]);
    salida = copias({"listar"});
    EXPECT_NE(salida.texto.find(nombre), std::string::npos);

    EXPECT_EQ(json({"restaurar", nombre})["restauradas"][0], casa.empresa("Panadería Núñez~1.QZT"));
    EXPECT_EQ(json({"restaurar", nombre, "--sobrescribir"})["restauradas"][0], ruta);
    const auto historia = json({"historico"});
    EXPECT_EQ(historia["entradas"].size(), 3U);
    EXPECT_EQ(historia["entradas"][0]["texto"], "ana ha bajado la empresa " + nombre);
    const auto espacio = json({"espacio"});
    EXPECT_GT(espacio["usadoMB"], 0.1);
    EXPECT_EQ(espacio["capacidadMB"], 1024);

    EXPECT_EQ(json({"pendientes"})["empresas"][0]["resultado"], "enviada");
    EXPECT_EQ(json({"borrar", nombre})["borrados"], Json::array({nombre}));
}

TEST_F(Copias, PersonalesArribaYAbajo) {
    conServicio();
    const auto contenido = pruebas::contenidoDePrueba(700000);
    const auto carta = casa.carpeta().escribir("Carta a Doña Íñiga.bin", contenido);
    const auto nada = casa.carpeta().ruta("nada.bin");
    auto salida = copias({"subir", "-t", "personales", carta, nada});
    EXPECT_EQ(salida.codigo, 4);
    EXPECT_EQ(salida.texto, "Subido: " + carta + "\n");
    EXPECT_EQ(salida.errores, "No encontrado: " + nada + "\n") << "one line a failure";

    const auto destino = casa.carpeta().ruta("bajada");
    EXPECT_EQ(json({"bajar", "-t", "personales", "Carta a Doña Íñiga.bin", "-o", destino})["bajados"].size(),
              1U);
    EXPECT_TRUE(casa.carpeta().leer("bajada/Carta a Doña Íñiga.bin") == contenido);
    salida = copias({"bajar", "-t", "personales", "Carta a Doña Íñiga.bin", "-o", destino});
    EXPECT_EQ(salida.codigo, 3) << "it is there, and nobody said to overwrite it";
    EXPECT_EQ(std::count(salida.errores.begin(), salida.errores.end(), '\n'), 1) << salida.errores;
    json({"borrar", "-t", "personales", "Carta a Doña Íñiga.bin"});
    json({"borrar", "-t", "personales", "Carta a Doña Íñiga.bin"}, 4);
}

TEST_F(Copias, LoQueNoPuedeSerSeDiceUnaVez) {
    conServicio();
    const auto una = [&](const pruebas::Salida& salida, int codigo) {
        EXPECT_EQ(salida.codigo, codigo) << salida.errores;
        EXPECT_EQ(std::count(salida.errores.begin(), salida.errores.end(), '\n'), 1) << salida.errores;
    };
    casa.variables().poner("TARVOLINE_CLAVE", "mala");
    una(copias({"listar"}), 5);
    json({"listar"}, 5);
    una(casa.correr("tarvoline-copias", {"-e", casa.empresa("falta.QZT"), "listar"}), 4);
    EXPECT_EQ(casa.correr("tarvoline-copias", {"listar"}).codigo, 5);
    EXPECT_EQ(copias({"bajar"}).codigo, 2);
    EXPECT_EQ(copias({"volar"}).codigo, 2);
    EXPECT_EQ(casa.correr("tarvoline-copias", {"--help"}).codigo, 0);
    servicio->matar();
    una(copias({"listar"}), 1);
    json({"listar"}, 1);
}

// A service may hold any name: it is shown without what a terminal obeys, and never used as a path.
TEST_F(Copias, NombresHostiles) {
    pruebas::ServicioGuion guion;
    pruebas::ArchivosServicio archivos(guion);
    casa.grabar("IP", guion.url().substr(7, guion.url().find("/qz") - 7));
    const std::string trampa = "corto\x1b[2J\x07.zip";
    const std::string fuera = "../../fuera.bin";
    archivos.archivos[trampa] = "x";
    archivos.archivos[fuera] = "datos";
    // Control characters do not pass a document as they are; the name arrives without them or not at all.
    guion.responder("ListadoArchivos", fuera + "\t..\tcorto\u009b2J.zip");
    guion.responder("FileSize", "5");
    auto salida = copias({"listar"});
    EXPECT_EQ(salida.codigo, 0) << salida.errores;
    EXPECT_NE(salida.texto.find("corto?2J.zip"), std::string::npos) << salida.texto;
    EXPECT_EQ(salida.texto.find("\u009b"), std::string::npos);
    const auto destino = casa.carpeta().ruta("bajada");
    json({"bajar", fuera, "-o", destino});
    EXPECT_EQ(casa.carpeta().leer("bajada/fuera.bin"), "datos");
    EXPECT_FALSE(
        std::filesystem::exists(std::filesystem::path(destino).parent_path().parent_path() / "fuera.bin"));
    EXPECT_EQ(copias({"bajar", "..", "-o", destino}).codigo, 3);
    EXPECT_EQ(copias({"restaurar", fuera}).codigo, 3);
}

}  // namespace
}  // namespace tarvoline
