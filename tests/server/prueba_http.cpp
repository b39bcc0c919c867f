// The door: what comes over the line that is no call, limits, and many clients at once.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "server/conexiones.h"
#include "server/linea_suelta.h"
#include "server/servicio_prueba.h"
#include "server/textos.h"

namespace tarvoline {
namespace {

using pruebas::ClientePrueba;
using pruebas::relleno;
using pruebas::ServicioEnMarcha;
using testing::HasSubstr;
namespace respuesta = server::respuesta;

// What is no call is told so with a fault, and nothing is read without end.
TEST(Puerta, RefusesWhatIsNoCallAndWhatHasNoEnd) {
    ServicioEnMarcha servicio;
    ClientePrueba ana = servicio.cliente();
    for (const std::string& cuerpo :
         {std::string(), std::string("hola"), ClientePrueba::sobre("NoExiste", {}),
          ClientePrueba::sobre("Backup", {{"posicion", "doce"}})}) {
        const auto respuesta = ana.enviar(cuerpo);
        ASSERT_TRUE(respuesta) << cuerpo;
        EXPECT_EQ(respuesta->status, 500) << cuerpo;
        EXPECT_THAT(respuesta->body, HasSubstr("<faultcode>soap:Client</faultcode>")) << cuerpo;
    }
    EXPECT_TRUE(ana.con("DatosUsuario").starts_with("1-ANA-")) << "the same line goes on";

    const std::string grande(3U << 20U, 'x');
    const auto entera = ana.enviar(grande);
    EXPECT_TRUE(!entera || entera->status == 413);
    std::size_t enviados = 0;
    const auto troceada = ana.http().Post(
        "/qzback/service.asmx",
        [&](std::size_t, httplib::DataSink& destino) {
            enviados += 1U << 16U;
            destino.write(grande.data(), 1U << 16U);
            if (enviados >= (64U << 20U)) destino.done();
            return true;
        },
        "text/xml");
    EXPECT_LT(enviados, 64U << 20U) << "an endless body is not read to its end";
    EXPECT_TRUE(!troceada || troceada->status >= 400);
    httplib::Headers comprimida{{"Content-Encoding", "gzip"}};
    const auto opaca = ana.http().Post("/qzback/service.asmx", comprimida, "\x1f\x8b", "text/xml");
    ASSERT_TRUE(opaca);
    EXPECT_EQ(opaca->status, 500);
    EXPECT_TRUE(ana.con("DatosUsuario").starts_with("1-ANA-"));
}

TEST(Puerta, GivesTheContractWithTheHostThatWasAsked) {
    ServicioEnMarcha servicio;
    ClientePrueba ana = servicio.cliente();
    const auto direccion = [&](const std::string& ruta, const std::string& anfitrion) {
        const auto respuesta = ana.http().Get(ruta, {{"Host", anfitrion}});
        EXPECT_TRUE(respuesta && respuesta->status == 200);
        const auto desde = respuesta->body.find("location=\"") + 10;
        return respuesta->body.substr(desde, respuesta->body.find('"', desde) - desde);
    };
    EXPECT_EQ(direccion("/qzback/service.asmx?wsdl", "copias.oficina:8790"),
              "http://copias.oficina:8790/qzback/service.asmx");
    EXPECT_EQ(direccion("/qzbackup/service.asmx?WSDL", "servidor"), "http://servidor/qzbackup/service.asmx");
    EXPECT_EQ(direccion("/qzback/service.asmx?wsdl", "x\"><script>"),
              "http://127.0.0.1:" + std::to_string(servicio.servicio->puerto()) + "/qzback/service.asmx");
    EXPECT_EQ(ana.http().Get("/qzback/service.asmx")->status, 200);
    std::string repetida = "bytes=0-";
    for (int i = 0; i < 1000; ++i)
        repetida += ",0-";
    EXPECT_LT(ana.http().Get("/qzback/service.asmx?wsdl", {{"Range", repetida}})->body.size(), 100'000U)
        << "a contract is not given a thousand times";
    for (const char* ruta : {"/", "/qzback/", "/qzback/service.asmx/../../etc/passwd", "/datos"}) {
        EXPECT_EQ(ana.http().Get(ruta)->status, 404) << ruta;
    }
}

TEST(Puerta, ServesManyClientsAtOnceEachWithItsFile) {
    ServicioEnMarcha servicio;
    constexpr int clientes = 12;  // more than there are processors, each on a line of its own
    std::vector<std::string> fallos(clientes);
    std::vector<std::thread> hilos;
    for (int i = 0; i < clientes; ++i) {
        hilos.emplace_back([&, i] {
            const bool esAna = i % 2 == 0;
            ClientePrueba cliente = servicio.cliente(esAna ? "ANA" : "BEA", esAna ? "secreta1" : "secreta2");
            const std::string nombre = "archivo " + std::to_string(i);
            const std::string contenido =
                relleno(600000 + static_cast<std::size_t>(i), static_cast<unsigned>(i));
            std::string& fallo = fallos[static_cast<std::size_t>(i)];
            fallo = cliente.subirEntero(nombre, contenido);
            if (fallo.empty() && cliente.bajarEntero(nombre) != contenido) fallo = "difiere";
            if (fallo.empty()) fallo = cliente.con("GrabarHistorico", {{"texto", nombre}});
        });
    }
    for (std::thread& hilo : hilos)
        hilo.join();
    EXPECT_THAT(fallos, testing::Each(""));
    EXPECT_EQ(servicio.cliente().con("CalcularEspacioTotal"), std::to_string(6 * 600000 + 30));
    EXPECT_EQ(std::ranges::count(servicio.cliente().con("LeerHistorico", {{"filtro", ""}}), '|'), 5);
}

TEST(Puerta, WritersAndDeletersOfOneFileTakeTurns) {
    ServicioEnMarcha servicio;
    const std::string contenido = relleno(ClientePrueba::paso * 2);
    std::atomic<int> rarezas = 0;
    std::vector<std::thread> hilos;
    for (int i = 0; i < 4; ++i) {
        hilos.emplace_back([&, i] {
            ClientePrueba ana = servicio.cliente();
            for (int vuelta = 0; vuelta < 8; ++vuelta) {
                if (i == 3) {
                    ana.con("EliminarArchivo", ana.lugar("uno"));
                    continue;
                }
                const std::string dicho = ana.subirEntero("uno", contenido);
                if (!dicho.empty() && dicho != respuesta::hueco) ++rarezas;
                if (!contenido.starts_with(ana.bajar("uno", 1, 1000))) ++rarezas;
            }
        });
    }
    for (std::thread& hilo : hilos)
        hilo.join();
    EXPECT_EQ(rarezas, 0);
    ClientePrueba ana = servicio.cliente();
    ASSERT_EQ(ana.subirEntero("uno", contenido), "");
    EXPECT_TRUE(ana.bajarEntero("uno") == contenido);
    EXPECT_EQ(ana.con("CalcularEspacioTotal"), std::to_string(contenido.size()));
}

// Two lines at most here: two that say nothing make room for a third, one that dawdles is cut.
TEST(Puerta, NobodyKeepsTheLinesToHimself) {
    server::LimitesConexion limites;
    limites.maximo = 2;
    limites.apurado = std::chrono::seconds(0);
    limites.peticion = std::chrono::seconds(0);
    server::ServidorHttp servidor(nullptr, limites);
    servidor.Get("/", [](const httplib::Request&, httplib::Response& respuesta) { respuesta.status = 204; });
    const int puerto = servidor.bind_to_any_port("127.0.0.1");
    std::thread hilo([&] { servidor.listen_after_bind(); });
    {
        pruebas::LineaSuelta callada(puerto);
        pruebas::LineaSuelta otra(puerto);
        httplib::Client cliente("127.0.0.1", puerto);
        const auto respuesta = cliente.Get("/");
        EXPECT_TRUE(respuesta && respuesta->status == 204);
    }
    pruebas::LineaSuelta lenta(puerto);
    lenta.enviar("GET / HTT");
    while (!lenta.cerrada(std::chrono::milliseconds(20)))
        servidor.cortarLentas();
    servidor.detener();
    hilo.join();
}

TEST(Puerta, EndsWhileClientsKeepTheirLinesOpen) {
    ServicioEnMarcha servicio;
    std::vector<ClientePrueba> ociosos;
    ociosos.reserve(10);
    for (int i = 0; i < 10; ++i) {
        ociosos.push_back(servicio.cliente());
        ociosos.back().con("DatosUsuario");
    }
    const auto antes = std::chrono::steady_clock::now();
    servicio.servicio->detener();
    EXPECT_LT(std::chrono::steady_clock::now() - antes, std::chrono::seconds(10));
    EXPECT_THROW(ociosos.front().con("DatosUsuario"), pruebas::FalloSoap);
}

}  // namespace
}  // namespace tarvoline
