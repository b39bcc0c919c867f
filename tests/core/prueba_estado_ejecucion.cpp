// The status file of unattended runs, read as a monitor reads it.
#include "core/estado_ejecucion.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "apoyo/carpeta_prueba.h"
#include "core/inicio.h"

namespace tarvoline::pruebas {
namespace {

using nlohmann::json;

json leido(const core::EstadoEjecucion& ejecucion) {
    return json::parse(core::componerEstadoEjecucion(ejecucion));
}

TEST(EstadoEjecucion, DiceCuandoComoYQueEmpresas) {
    using namespace std::chrono;
    core::EstadoEjecucion ejecucion;
    ejecucion.inicio = sys_days(2024y / February / 29) + 23h + 59min + 58s + 999ms;
    ejecucion.fin = ejecucion.inicio + 3s;
    ejecucion.codigo = core::salida::empresaFallida;
    ejecucion.resumen.anotar({1, "/datos/AÑO.QZT", true, ""});
    ejecucion.resumen.anotar({7, "/datos/\"B\".QZT", false, "ERROR: sin espacio"});
    const auto estado = leido(ejecucion);
    EXPECT_EQ(estado["programa"], "tarvoline");
    EXPECT_EQ(estado["inicio"], "2024-02-29T23:59:58Z");
    EXPECT_EQ(estado["fin"], "2024-03-01T00:00:01Z");
    EXPECT_EQ(estado["codigo"], 3);
    EXPECT_EQ(estado["resultado"], "fallida");
    EXPECT_TRUE(estado["reanudacion"].is_null());
    EXPECT_EQ(estado["empresas"],
              json::parse(R"([{"ranura":1,"ruta":"/datos/AÑO.QZT","resultado":"enviada","texto":""},
                    {"ranura":7,"ruta":"/datos/\"B\".QZT","resultado":"fallida","texto":"ERROR: sin espacio"}])"));
}

TEST(EstadoEjecucion, CadaCodigoTieneSuPalabra) {
    for (const auto& [codigo, palabra] : {std::pair{core::salida::bien, "bien"},
                                          {core::salida::noArranca, "no arranca"},
                                          {core::salida::empresaFallida, "fallida"},
                                          {core::salida::senal + 15, "interrumpida"}}) {
        core::EstadoEjecucion ejecucion;
        ejecucion.codigo = codigo;
        EXPECT_EQ(leido(ejecucion)["resultado"], palabra);
    }
}

TEST(EstadoEjecucion, UnaRanuraRepetidaGuardaSuUltimoResultado) {
    core::ResumenEjecucion resumen;
    resumen.anotar({2, "/a.qzt", false, "ERROR"});
    resumen.anotar({2, "/b.qzt", true, ""});  // the slot was given to another company meanwhile
    resumen.anotar({2, "/a.qzt", true, ""});
    ASSERT_EQ(resumen.empresas.size(), 2U);
    EXPECT_TRUE(resumen.empresas[0].enviada);
    EXPECT_EQ(resumen.empresas[0].texto, "");
    EXPECT_EQ(resumen.empresas[1].ruta, "/b.qzt");
}

TEST(EstadoEjecucion, UnTextoQueNoEsUtf8NoCuestaElArchivo) {
    core::EstadoEjecucion ejecucion;
    ejecucion.motivo = "espa\xf1ol";
    EXPECT_EQ(leido(ejecucion)["motivo"], "espa\uFFFDol");
}

TEST(EstadoEjecucion, SeEscribeEnteroYSoloParaSuDuenio) {
    const CarpetaPrueba carpeta;
    const auto archivos = platform::crearSistemaArchivos();
    const auto ruta = carpeta.ruta("estado/tarvoline/estado.json");
    core::EstadoEjecucion ejecucion;
    ejecucion.motivo = std::string(5000, 'x');
    core::escribirEstadoEjecucion(*archivos, ruta, ejecucion);
    ejecucion.motivo = "corto";
    core::escribirEstadoEjecucion(*archivos, ruta, ejecucion);
    EXPECT_EQ(json::parse(carpeta.leer("estado/tarvoline/estado.json"))["motivo"], "corto");
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(ruta).permissions(), perms::owner_read | perms::owner_write);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(carpeta.ruta("estado/tarvoline")), {}), 1)
        << "nothing is left beside";
}

}  // namespace
}  // namespace tarvoline::pruebas
