// The unattended run as a process, against the embedded service as another.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>
#include <random>
#include <set>
#include <thread>

#include "apoyo/servicio_guion.h"
#include "apoyo/servicio_proceso.h"
#include "sistema/casa.h"

namespace tarvoline {
namespace {

using Json = nlohmann::json;
using namespace std::chrono_literals;

class Desatendido : public ::testing::Test {
  protected:
    Desatendido() {
        servicio.alta("ana", "Ana2024", "C0001");
        casa.grabar("IP", servicio.anfitrion());
        casa.variables().poner("TARVOLINE_CLAVE", "Ana2024");
    }
    // A company whose archive takes some dozens of pieces.
    std::string crearGrande(int ranura) {
        const auto ruta = casa.crearEmpresa("Grande", "ana", "Ana2024", ranura);
        casa.carpeta().escribir("empresas/GRAND01.QZD", grande);
        return ruta;
    }
    std::vector<std::string> guardados() {
        const auto lista = casa.correr("tarvoline-copias", {"-u", "ana", "listar", "--json"});
        EXPECT_EQ(lista.codigo, 0) << lista.errores;
        std::vector<std::string> nombres;
        const auto respuesta = Json::parse(lista.texto);
        for (const auto& archivo : respuesta["archivos"]) {
            nombres.push_back(archivo["nombre"]);
        }
        return nombres;
    }
    // Waits until an upload is recorded beyond position `desde`; false when the run ended before.
    bool esperarSubida(pruebas::Proceso& proceso, long desde) {
        while (proceso.vive()) {
            const auto posicion = casa.leer("Offset");
            if (!posicion.empty() && std::stol(posicion) > desde) {
                return true;
            }
        }
        return false;
    }
    // An upload cut there cannot be resumed: its next piece would be longer than what is left. A run that
    // died between the end of the upload and that of its record left no archive, and nothing to resume.
    bool cortadaEnSuUltimaPieza() {
        const auto archivo = casa.leer("Active");
        constexpr std::uintmax_t pieza = 262144;
        return !archivo.empty() && std::filesystem::exists(archivo) &&
               std::stoul(casa.leer("Offset")) + pieza > std::filesystem::file_size(archivo);
    }
    // Every stored archive gives the company back; one given up half way does not have to, unless it is the
    // newest, which has gone up anew under its name.
    void comprobarGuardados(const std::set<std::string>& abandonadas = {}) {
        const auto nombres = guardados();
        ASSERT_FALSE(nombres.empty());
        for (const auto& nombre : nombres) {
            if (abandonadas.contains(nombre) && nombre != *std::ranges::max_element(nombres)) {
                continue;
            }
            const auto salida = casa.correr("tarvoline-copias", {"-u", "ana", "restaurar", "--json", nombre});
            ASSERT_EQ(salida.codigo, 0) << salida.errores;
            const std::string ruta = Json::parse(salida.texto)["restauradas"][0];
            std::ifstream archivo(ruta, std::ios::binary);
            std::string numero(2, ' ');
            archivo.read(numero.data(), 2);
            EXPECT_TRUE(casa.carpeta().leer("empresas/GRAND" + numero + ".QZD") == grande) << nombre;
        }
    }

    pruebas::Casa casa;
    pruebas::ServicioProceso servicio;
    const std::string grande = pruebas::contenidoDePrueba(6'000'000);
};

TEST_F(Desatendido, SubeLasPendientesYDejaSuEstado) {
    EXPECT_EQ(casa.desatendido(), 0);
    EXPECT_EQ(Json::parse(casa.estado())["resultado"], "bien");

    const auto ruta = crearGrande(1);
    EXPECT_EQ(casa.desatendido(), 0);
    EXPECT_EQ(casa.leer("EMP1"), "");
    auto estado = Json::parse(casa.estado());
    EXPECT_EQ(estado["codigo"], 0);
    EXPECT_EQ(estado["empresas"][0]["ruta"], ruta);
    EXPECT_EQ(estado["empresas"][0]["resultado"], "enviada");
    comprobarGuardados();

    // One whose user the service refuses, beside one that goes.
    const auto mala = casa.crearEmpresa("Mala", "nadie", "Nada", 5);
    casa.marcar(ruta, 6);
    EXPECT_EQ(casa.desatendido(), 3);
    EXPECT_EQ(casa.leer("EMP6"), "");
    EXPECT_NE(casa.leer("EMP5"), "");
    EXPECT_NE(casa.leer("ERROR5"), "");
    estado = Json::parse(casa.estado());
    EXPECT_EQ(estado["resultado"], "fallida");
    EXPECT_EQ(estado["empresas"].size(), 2U);
}

TEST_F(Desatendido, DosALaVez) {
    // The first one waits for a service that never answers.
    pruebas::ServidorGuion mudo([](const pruebas::PeticionGuion&) { return pruebas::Actuacion::callar(); });
    crearGrande(1);
    casa.grabar("IP", mudo.anfitrion());
    const auto primera = casa.lanzar("tarvoline", {"1"}, "primera");
    while (mudo.peticiones().empty() && primera->vive()) {
        std::this_thread::sleep_for(1ms);
    }
    ASSERT_TRUE(primera->vive());
    EXPECT_EQ(casa.desatendido(), 11);
    EXPECT_EQ(casa.correr("tarvoline-copias", {"pendientes"}).codigo, 11);
    EXPECT_EQ(casa.estado(), "") << "the status file belongs to the run that works";
    mudo.parar();
    EXPECT_EQ(primera->esperar(), 3);
    EXPECT_NE(casa.leer("EMP1"), "");
    EXPECT_EQ(Json::parse(casa.estado())["codigo"], 3);
}

TEST_F(Desatendido, MatadoUnaYOtraVezAcabaExacto) {
    std::random_device azar;
    const auto semilla = azar();
    RecordProperty("semilla", std::to_string(semilla));
    std::mt19937 dado(semilla);
    const auto ruta = crearGrande(1);
    int muertes = 0;
    std::set<std::string> abandonadas;
    for (int vez = 0; vez < 8 || (muertes == 0 && vez < 40); ++vez) {
        const auto antes = casa.leer("Offset");
        const auto proceso = casa.lanzar("tarvoline", {"1"});
        if (!esperarSubida(*proceso, antes.empty() ? 1 : std::stol(antes))) {
            proceso->esperar();  // it came to its end: once more from the beginning
            casa.marcar(ruta, 1);
            continue;
        }
        std::this_thread::sleep_for(std::chrono::microseconds(dado() % 4000));
        proceso->senal(SIGKILL);
        muertes += proceso->esperar() == 128 + SIGKILL ? 1 : 0;
        if (cortadaEnSuUltimaPieza()) {
            abandonadas.insert(std::filesystem::path(casa.leer("Active")).filename());
        }
    }
    EXPECT_GT(muertes, 0) << "seed " << semilla;
    if (cortadaEnSuUltimaPieza()) {
        EXPECT_EQ(casa.desatendido(), 3) << "seed " << semilla << ": it cannot go on, and goes up anew";
    }
    EXPECT_EQ(casa.desatendido(), 0) << "seed " << semilla << ": " << casa.carpeta().leer("corrido.err");
    EXPECT_EQ(casa.leer("Active") + casa.leer("EMP1") + casa.leer("Password"), "");
    comprobarGuardados(abandonadas);
}

TEST_F(Desatendido, UnaSenalDeFinEsComoUnaCaida) {
    crearGrande(1);
    const auto proceso = casa.lanzar("tarvoline", {"1"});
    ASSERT_TRUE(esperarSubida(*proceso, 1));
    proceso->senal(SIGTERM);
    EXPECT_EQ(proceso->esperar(), 128 + SIGTERM);
    EXPECT_NE(casa.leer("Active"), "");
    EXPECT_NE(casa.leer("EMP1"), "");
    EXPECT_EQ(Json::parse(casa.estado())["resultado"], "interrumpida");
    EXPECT_EQ(casa.desatendido(), 0);
    EXPECT_EQ(Json::parse(casa.estado())["reanudacion"]["resultado"], "enviada");
    comprobarGuardados();
}

TEST_F(Desatendido, ElServicioCaeEntreDosPiezas) {
    crearGrande(1);
    const auto proceso = casa.lanzar("tarvoline", {"1"});
    ASSERT_TRUE(esperarSubida(*proceso, 1));
    servicio.matar();
    EXPECT_EQ(proceso->esperar(), 3);
    EXPECT_NE(casa.leer("EMP1"), "");
    EXPECT_EQ(casa.leer("ERROR1").substr(0, 5), "ERROR");
    servicio.arrancar();
    EXPECT_EQ(casa.desatendido(), 0);
    EXPECT_EQ(casa.leer("EMP1") + casa.leer("ERROR1"), "");
    comprobarGuardados();
}

TEST_F(Desatendido, AjustesEstropeadosAMano) {
    const auto sano = casa.carpeta().leer("XDG_CONFIG_HOME/QZ/ajustes.ini");
    casa.carpeta().escribir("XDG_CONFIG_HOME/QZ/ajustes.ini",
                            "no soy un ajuste\n" + sano + "[sin cerrar\n\x01\xff\n");
    crearGrande(1);
    EXPECT_EQ(casa.desatendido(), 0);
    const auto despues = casa.carpeta().leer("XDG_CONFIG_HOME/QZ/ajustes.ini");
    EXPECT_NE(despues.find("no soy un ajuste"), std::string::npos) << "what is not understood is kept";
    EXPECT_EQ(guardados().size(), 1U);
}

TEST_F(Desatendido, LoQueNoDejaArrancar) {
    casa.grabar("language", "falta.qzi", {});
    auto salida = casa.correr("tarvoline", {"1"});
    EXPECT_EQ(salida.codigo, 1);
    EXPECT_NE(salida.errores.find("falta.qzi"), std::string::npos) << salida.errores;
    EXPECT_EQ(Json::parse(casa.estado())["resultado"], "no arranca");
    EXPECT_EQ(casa.correr("tarvoline-copias", {"-u", "ana", "listar"}).codigo, 1);

    // A folder in the place of the settings cannot be read by anybody.
    std::filesystem::remove(casa.rutaAjustes());
    std::filesystem::create_directory(casa.rutaAjustes());
    salida = casa.correr("tarvoline", {"1"});
    EXPECT_EQ(salida.codigo, 1) << salida.errores;
    EXPECT_FALSE(salida.errores.empty());
    EXPECT_TRUE(std::filesystem::is_directory(casa.rutaAjustes()));
    EXPECT_EQ(casa.correr("tarvoline-copias", {"-u", "ana", "listar"}).codigo, 1);
}

}  // namespace
}  // namespace tarvoline
