// One-time credentials: what is accepted, once, and for how long.
#include "server/credenciales.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "server/cifrado.h"
#include "server/servicio_prueba.h"
#include "server/textos.h"

namespace tarvoline {
namespace {

using namespace std::chrono_literals;
using pruebas::ClientePrueba;
using pruebas::ServicioEnMarcha;
namespace respuesta = server::respuesta;

class UnaCredencial : public testing::Test {
  protected:
    std::string hecha(const std::string& clave) {
        return core::CodificarClave(credenciales_.DTS("a") + clave, core::fuenteAleatoria());
    }
    pruebas::RelojFijo reloj_;
    server::Credenciales credenciales_{reloj_};
};

TEST_F(UnaCredencial, ServesOnceAndOnlyItsPassword) {
    const std::string buena = hecha("Clave1");
    EXPECT_TRUE(credenciales_.comprobar(buena, "Clave1"));
    EXPECT_FALSE(credenciales_.comprobar(buena, "Clave1")) << "played back";
    const std::string otra = hecha("Clave1");
    EXPECT_FALSE(credenciales_.comprobar(otra, "clave1"));
    EXPECT_FALSE(credenciales_.comprobar(otra, "Clave1")) << "a wrong attempt uses it up too";
    for (const std::string mala : {"", "x", "no es alfanumérico", "AAAA"}) {
        EXPECT_FALSE(credenciales_.comprobar(mala, "Clave1")) << mala;
    }
    const auto inventada = core::CodificarClave("0123456789ABCDEFClave1", core::fuenteAleatoria());
    EXPECT_FALSE(credenciales_.comprobar(inventada, "Clave1")) << "never handed out";
    const auto vacia = core::CodificarClave(credenciales_.DTS("a"), core::fuenteAleatoria());
    EXPECT_FALSE(credenciales_.comprobar(vacia, "Clave1"));

    const std::string una = hecha("Clave1");
    const std::string tardia = hecha("Clave1");
    reloj_.avanzar(15min - 1s);
    EXPECT_TRUE(credenciales_.comprobar(una, "Clave1"));
    reloj_.avanzar(1s);
    EXPECT_FALSE(credenciales_.comprobar(tardia, "Clave1")) << "it lives fifteen minutes";
}

TEST_F(UnaCredencial, AFloodPushesOutItsOwnTextsOnly) {
    const std::string ajena =
        core::CodificarClave(credenciales_.DTS("otra") + "Clave1", core::fuenteAleatoria());
    const std::string primera = hecha("Clave1");
    for (std::size_t i = 0; i < server::Credenciales::maximoPorDireccion; ++i)
        credenciales_.DTS("a");
    EXPECT_FALSE(credenciales_.comprobar(primera, "Clave1"));
    EXPECT_TRUE(credenciales_.comprobar(ajena, "Clave1"));
    EXPECT_TRUE(credenciales_.comprobar(hecha("Clave1"), "Clave1"));
}

TEST_F(UnaCredencial, TextsAreFreshAndAlphanumeric) {
    std::set<std::string> vistos;
    for (int i = 0; i < 1000; ++i) {
        const std::string texto = credenciales_.DTS("a");
        EXPECT_TRUE(texto.size() >= 12 && texto.size() <= 24) << texto;
        EXPECT_TRUE(std::ranges::all_of(texto, server::esAlfanumerico)) << texto;
        EXPECT_TRUE(vistos.insert(texto).second);
    }
}

TEST(Identificacion, IsGoodFromOneAddress) {
    pruebas::RelojFijo reloj;
    server::Identificados identificados(reloj);
    identificados.anotar("a", 1);
    EXPECT_TRUE(identificados.reciente("a", 1));
    EXPECT_FALSE(identificados.reciente("a", 2));
    EXPECT_FALSE(identificados.reciente("b", 1));
}

TEST(Freno, SlowsDownOnlyWhoKeepsFailing) {
    pruebas::RelojFijo reloj;
    server::FrenoFallos freno(reloj);
    for (int i = 0; i < server::FrenoFallos::gratis; ++i)
        EXPECT_EQ(freno.fallo("a"), 0ms);
    EXPECT_GT(freno.fallo("a"), 0ms);
    EXPECT_EQ(freno.fallo("b"), 0ms);
    for (int i = 0; i < 100; ++i)
        EXPECT_LE(freno.fallo("a"), 2s);
    reloj.avanzar(10min);
    EXPECT_EQ(freno.fallo("a"), 0ms);
}

TEST(CredencialPorHttp, RefusalsUseTheWordsThatClientsKnow) {
    ServicioEnMarcha servicio;
    EXPECT_TRUE(servicio.cliente().con("DatosUsuario").starts_with("1-ANA-"));
    for (const std::string desconocido : {"", "  ", "NADIE", "ana"}) {
        EXPECT_EQ(servicio.cliente(desconocido).con("DatosUsuario"), respuesta::sinClaveAcceso)
            << desconocido;
    }
    const std::string rechazo = servicio.cliente("ANA", "otra").con("DatosUsuario");
    EXPECT_TRUE(rechazo.starts_with("ERROR:"));
    EXPECT_NE(rechazo, respuesta::sinClaveAcceso);
    EXPECT_EQ(servicio.cliente("ANA", "secreta2").con("DatosUsuario"), rechazo) << "another user's password";

    ClientePrueba ana = servicio.cliente();
    const ClientePrueba::Parametros quien{{"usuario", "ANA"}, {"credencial", ana.credencial()}};
    EXPECT_TRUE(ana.llamar("DatosUsuario", quien).starts_with("1-ANA-"));
    EXPECT_EQ(ana.llamar("DatosUsuario", quien), rechazo) << "played back";
    EXPECT_EQ(ana.llamar("DatosUsuario", {}), respuesta::sinClaveAcceso) << "without arguments";
}

TEST(ClavesGuardadas, AreSealedAndBoundToTheirOwner) {
    ServicioEnMarcha servicio;
    server::Cifrado cifrado(*servicio.archivos, servicio.carpeta.ruta("otra.bin"));
    const std::string sellada = cifrado.sellar("secreta1", "ANA");
    EXPECT_EQ(sellada.find("secreta1"), std::string::npos);
    EXPECT_NE(cifrado.sellar("secreta1", "ANA"), sellada);
    EXPECT_EQ(cifrado.abrir(sellada, "ANA"), "secreta1");
    EXPECT_THROW(cifrado.abrir(sellada, "BEA"), server::ErrorServidor);
    std::string tocada = sellada;
    tocada.back() = static_cast<char>(tocada.back() ^ 1);
    EXPECT_THROW(cifrado.abrir(tocada, "ANA"), server::ErrorServidor);
    EXPECT_THROW(cifrado.abrir("corto", "ANA"), server::ErrorServidor);

    servicio.servicio.reset();
    for (const char* archivo : {"raiz/servicio.sqlite", "raiz/servicio.sqlite-wal"}) {
        EXPECT_EQ(servicio.carpeta.leer(archivo).find("secreta"), std::string::npos) << archivo;
    }
    servicio.carpeta.escribir("raiz/clave.bin", std::string(32, 'k'));
    EXPECT_THROW(servicio.arrancar(), server::ErrorServidor)
        << "another key opens nothing, and says so at the start";
}

}  // namespace
}  // namespace tarvoline
