// The status file of unattended runs, read as a monitor reads it.
#include "core/estado_ejecucion.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "apoyo/carpeta_prueba.h"
#include "core/inicio.h"

namespace tarvoline::pruebas {
namespace {

using nlohmann::json;

TEST(EstadoEjecucion, DiceCuandoComoYQueEmpresas) {
    using namespace std::chrono;
    core::EstadoEjecucion ejecucion;
    ejecucion.inicio = sys_days(2024y / February / 29) + 23h + 59min + 58s + 999ms;
    ejecucion.fin = ejecucion.inicio + 3s;
    ejecucion.codigo = core::salida::empresaFallida;
    ejecucion.motivo = "espa\xf1ol";  // a text that is no UTF-8 does not cost the file
    ejecucion.resumen.anotar({1, "/datos/AÑO.QZT", false, "ERROR"});
    ejecucion.resumen.anotar({7, "/datos/\"B\".QZT", false, "ERROR: sin espacio"});
    ejecucion.resumen.anotar({1, "/datos/AÑO.QZT", true, ""});  // a later try takes the place of the first
    ejecucion.resumen.anotar({7, "/c.qzt", true, ""});  // the slot was given to another company meanwhile
    const auto estado = json::parse(core::componerEstadoEjecucion(ejecucion));
    EXPECT_EQ(estado["programa"], "tarvoline");
    EXPECT_EQ(estado["inicio"], "2024-02-29T23:59:58Z");
    EXPECT_EQ(estado["fin"], "2024-03-01T00:00:01Z");
    EXPECT_EQ(estado["codigo"], 3);
    EXPECT_EQ(estado["resultado"], "fallida");
    EXPECT_EQ(estado["motivo"], "espa\uFFFDol");
    EXPECT_TRUE(estado["reanudacion"].is_null());
    EXPECT_EQ(estado["empresas"],
              json::parse(R"([{"ranura":1,"ruta":"/datos/AÑO.QZT","resultado":"enviada","texto":""},
                    {"ranura":7,"ruta":"/datos/\"B\".QZT","resultado":"fallida","texto":"ERROR: sin espacio"},
                    {"ranura":7,"ruta":"/c.qzt","resultado":"enviada","texto":""}])"));
}

TEST(EstadoEjecucion, SeEscribeEnteroYSoloParaSuDuenio) {
    const CarpetaPrueba carpeta;
    const auto archivos = platform::crearSistemaArchivos();
    const auto ruta = carpeta.ruta("estado/tarvoline/estado.json");
    core::EstadoEjecucion ejecucion;
    for (const auto& motivo : {std::string(5000, 'x'), std::string("corto")}) {
        ejecucion.motivo = motivo;
        core::escribirEstadoEjecucion(*archivos, ruta, ejecucion);
    }
    EXPECT_EQ(json::parse(carpeta.leer("estado/tarvoline/estado.json"))["motivo"], "corto");
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(ruta).permissions(), perms::owner_read | perms::owner_write);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(carpeta.ruta("estado/tarvoline")), {}), 1)
        << "nothing is left beside";
}

}  // namespace
}  // namespace tarvoline::pruebas
