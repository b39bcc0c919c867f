// The program itself: killed and started again, ended in order, refused.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <thread>

#include "apoyo/servicio_proceso.h"
#include "server/servicio_prueba.h"
#include "server/textos.h"

namespace tarvoline {
namespace {

using pruebas::ClientePrueba;
using pruebas::relleno;
using pruebas::ServicioProceso;

constexpr std::size_t paso = ClientePrueba::paso;

std::string pieza(const std::string& contenido, std::size_t n) {
    return contenido.substr(n * paso, paso + 1);
}

TEST(ServicioProceso, PrintsItsAddressFirst) {
    ServicioProceso servicio;
    EXPECT_EQ(servicio.url(),
              "http://127.0.0.1:" + std::to_string(servicio.puerto()) + "/qzback/service.asmx?wsdl");
    // A service without users says, a moment later, how to make one.
    while (servicio.carpeta().leer("servicio.err").find("--alta") == std::string::npos)
        std::this_thread::yield();
    for (const auto& entrada : std::filesystem::recursive_directory_iterator(servicio.raiz())) {
        const auto permisos = std::filesystem::status(entrada).permissions();
        EXPECT_EQ(permisos & (std::filesystem::perms::group_all | std::filesystem::perms::others_all),
                  std::filesystem::perms::none)
            << entrada.path();
    }
}

TEST(ServicioProceso, KilledBetweenPiecesGoesOnWhereItWas) {
    ServicioProceso servicio;
    servicio.alta("ANA", "secreta1", "AC01");
    const std::string contenido = relleno(5 * paso + 77);
    for (std::size_t n = 0; n < 6; ++n) {
        ClientePrueba ana(servicio.puerto());
        ASSERT_EQ(ana.subir("copia", pieza(contenido, n), static_cast<int>(n * paso + 1)), "") << n;
        const std::string vieja = ana.credencial();
        servicio.matar();
        servicio.arrancar();
        EXPECT_EQ(ana.llamar("DatosUsuario", {{"usuario", "ANA"}, {"credencial", vieja}}),
                  server::respuesta::claveIncorrecta)
            << "what was handed out before is gone";
        const std::size_t recibido = std::min((n + 1) * paso + 1, contenido.size());
        EXPECT_EQ(ana.con("FileSize", ana.lugar("copia")), std::to_string(recibido));
        EXPECT_EQ(ana.con("CalcularEspacioTotal"), std::to_string(recibido));
    }
    EXPECT_TRUE(ClientePrueba(servicio.puerto()).bajarEntero("copia") == contenido);
}

TEST(ServicioProceso, KilledInTheMiddleOfPiecesNeverKeepsAHole) {
    ServicioProceso servicio;
    servicio.alta("ANA", "secreta1", "AC01");
    const std::string contenido = relleno(4 * paso);
    for (int vez = 0; vez < 10; ++vez) {
        std::atomic<int> enviadas = 0;
        std::thread cliente([&] {
            try {
                ClientePrueba ana(servicio.puerto());
                for (std::size_t n = 0; n < 4; ++n, ++enviadas) {
                    ana.subir("copia", pieza(contenido, n), static_cast<int>(n * paso + 1));
                }
            } catch (const pruebas::FalloSoap&) {
                enviadas = 4;  // the line is cut, as it should
            }
        });
        while (enviadas < vez % 4)
            std::this_thread::yield();
        servicio.matar();
        cliente.join();
        servicio.arrancar();
        ClientePrueba ana(servicio.puerto());
        const std::string guardado = ana.bajarEntero("copia");
        EXPECT_TRUE(contenido.starts_with(guardado)) << guardado.size();
        EXPECT_EQ(ana.con("CalcularEspacioTotal"), std::to_string(guardado.size()));
    }
}

TEST(ServicioProceso, EndsInOrderAndKeepsWhatItAnswered) {
    ServicioProceso servicio;
    servicio.alta("ANA", "secreta1", "AC01", 3, "Ana");
    ClientePrueba ana(servicio.puerto());
    ASSERT_EQ(ana.subirEntero("uno", "contenido"), "");
    ASSERT_EQ(ana.con("GrabarHistorico", {{"texto", "ANA ha subido el archivo uno"}}), "");
    EXPECT_EQ(servicio.terminar(SIGTERM), 0);
    EXPECT_THAT(servicio.carpeta().leer("raiz/registro/servicio.log"), testing::HasSubstr("fin"));
    servicio.arrancar();
    EXPECT_EQ(ana.bajarEntero("uno"), "contenido");
    EXPECT_THAT(ana.con("LeerHistorico", {{"filtro", ""}}),
                testing::HasSubstr("ANA ha subido el archivo uno"));
    EXPECT_EQ(ana.con("CapacidadContratada", {{"codigoCuenta", "AC01"}}), "3");
    EXPECT_EQ(servicio.terminar(SIGINT), 0);
}

TEST(ServicioProceso, RefusesWhatWouldDoHarm) {
    ServicioProceso servicio;
    const std::string raiz = servicio.raiz();
    const std::string otra = servicio.carpeta().ruta("otra");
    struct Caso {
        const char* que;
        std::vector<std::string> argumentos;
        int codigo;
    };
    for (const auto& [que, argumentos, codigo] : std::initializer_list<Caso>{
             {"a second one on the same root", {"--raiz", raiz, "--puerto", "0"}, 1},
             {"a port that is taken", {"--raiz", otra, "--puerto", std::to_string(servicio.puerto())}, 1},
             {"passwords in clear on the network", {"--raiz", otra, "--direccion", "0.0.0.0"}, 1},
             {"a certificate without its key", {"--raiz", otra, "--certificado", "/no/hay"}, 1},
             {"neither is there",
              {"--raiz", otra, "--certificado", "/no/hay", "--clave-certificado", "/no/hay"},
              1},
             {"a user whose name no result carries",
              {"usuario", "--raiz", raiz, "--alta", "A-B", "--clave", "x1"},
              1},
             {"no root", {}, 2},
             {"no port", {"--puerto", "70000", "--raiz", otra}, 2},
             {"nothing to do", {"usuario", "--raiz", otra}, 2},
             {"two things at once", {"usuario", "--raiz", otra, "--alta", "A", "--baja", "B"}, 2},
             {"a list beside the running service", {"usuario", "--raiz", raiz, "--listar"}, 0}}) {
        EXPECT_EQ(servicio.mandato(argumentos), codigo) << que;
    }
}

}  // namespace
}  // namespace tarvoline
