// The restore button over the rows of the grid, with a service that holds real archives.
#include <gtest/gtest.h>

#include "core/carpetas.h"
#include "workflows/empaquetado.h"
#include "workflows/mundo_servicio.h"
#include "workflows/restauracion.h"

namespace tarvoline::workflows {
namespace {

class PruebaRestaurarClick : public ::testing::Test {
  protected:
    PruebaRestaurarClick() {
        for (const char* nombre : {"Una.QZT", "Otra.QZT", "Tercera.QZT"}) {
            const auto ruta = mundo.crearEmpresa(nombre);
            const auto archivo =
                mundo.flujos.empaquetado().ZipEmpresa(ruta, mundo.nucleo.ruta("salida"), false);
            nombres.push_back(core::SoloNombre(archivo));
            archivos.archivos[nombres.back()] = mundo.nucleo.carpeta().leer("salida/" + nombres.back());
        }
        auto& rejilla = mundo.vista().fx1;
        rejilla.ponerFilas(4);
        for (int fila = 1; fila <= 3; ++fila) {
            rejilla.ponerCelda(fila, 2, nombres[static_cast<std::size_t>(fila - 1)]);
        }
        mundo.servicio.olvidar();
    }
    void elegir(int desde, int hasta) {
        mundo.vista().fx1.Row = desde;
        mundo.vista().fx1.RowSel = hasta;
    }
    void restaurar() { mundo.flujos.restauracion().Restaurar_Click(); }
    bool hay(const std::string& nombre) { return mundo.nucleo.carpeta().hay("datos/" + nombre); }
    bool quedaAlgo() { return !mundo.archivosDe("temporal").empty(); }

    pruebas::MundoServicio mundo;
    core::Estado& estado = mundo.estado();
    pruebas::ArchivosServicio archivos{mundo.servicio};
    std::vector<std::string> nombres;
};

TEST_F(PruebaRestaurarClick, VariasFilasVanUnaTrasOtraDeArribaAbajo) {
    elegir(2, 1);  // chosen upwards
    mundo.guion().rellenar({}, 1);
    mundo.guion().rellenar({}, 1);
    restaurar();
    EXPECT_TRUE(hay("Una~1.QZT"));
    EXPECT_TRUE(hay("Otra~1.QZT"));
    EXPECT_FALSE(hay("Tercera~1.QZT"));
    EXPECT_EQ(mundo.nucleo.carpeta().leer("datos/Una~1.QZT").substr(0, 2), "04");
    EXPECT_EQ(mundo.nucleo.carpeta().leer("datos/Otra~1.QZT").substr(0, 2), "05");
    // The line names the row behind the last one restored.
    EXPECT_EQ(mundo.historia(), std::vector<std::string>{"maria ha bajado la empresa " + nombres[2]});
    EXPECT_FALSE(quedaAlgo());
}

TEST_F(PruebaRestaurarClick, PararEnLaSegundaDejaLaPrimera) {
    elegir(1, 2);
    mundo.guion().rellenar({}, 1);
    int bajadas = 0;
    mundo.servicio.responder("FileSize", [&](pruebas::ServicioGuion::Argumentos& argumentos) {
        estado.gDetener = ++bajadas == 2;
        return std::to_string(
            archivos.archivos[core::DecodificarNombre(std::get<std::string>(argumentos[4]))].size());
    });
    restaurar();
    EXPECT_TRUE(hay("Una~1.QZT"));
    EXPECT_FALSE(hay("Otra~1.QZT"));
    EXPECT_EQ(mundo.guion().ultimo().texto, "<1227>");
    EXPECT_FALSE(estado.gDetener);
    EXPECT_TRUE(estado.gInterrumpido);
    EXPECT_TRUE(mundo.historia().empty());
    EXPECT_FALSE(quedaAlgo());
}

TEST_F(PruebaRestaurarClick, SinFilaOEnOtraVistaNoHaceNada) {
    elegir(0, 0);
    restaurar();
    EXPECT_EQ(mundo.guion().ultimo().texto, "<213>");
    elegir(1, 1);
    for (const auto vista : {core::Opcion::personal, core::Opcion::historico}) {
        mundo.guion().olvidar();
        mundo.vista().Option1 = vista;
        restaurar();
        EXPECT_EQ(mundo.guion().ultimo().texto, "<213>");
    }
    EXPECT_EQ(mundo.servicio.nombres(), "");
}

TEST_F(PruebaRestaurarClick, UnaBajadaQueFallaNoRestauraNada) {
    elegir(1, 1);
    // A line that breaks leaves a short archive, which the restore refuses.
    const auto entero = archivos.archivos[nombres[0]];
    archivos.archivos[nombres[0]] = entero + pruebas::contenidoDePrueba(600000);
    mundo.servicio.cortar("Restore", 2);
    restaurar();
    EXPECT_TRUE(mundo.guion().mostro("<971>"));
    EXPECT_FALSE(quedaAlgo());
    // What an earlier day has left is not restored in place of it.
    const auto local = mundo.nucleo.carpetas.carpetaTransferencia() + "/" + nombres[0];
    platform::escribirAtomico(mundo.nucleo.archivos, local, entero);
    mundo.servicio.responder("FileSize", "ERROR:ya no está");
    restaurar();
    EXPECT_TRUE(mundo.guion().mostro("ERROR:ya no está"));
    // A name with a folder in it is not followed.
    mundo.servicio.olvidar();
    mundo.vista().fx1.ponerCelda(1, 2, "../../Una.ZIP");
    restaurar();
    EXPECT_TRUE(mundo.guion().mostro("<982>"));
    EXPECT_EQ(mundo.servicio.nombres(), "");
    EXPECT_FALSE(hay("Una~1.QZT") || mundo.vista().bloqueada);
    EXPECT_EQ(mundo.flujos.restauracion().rutaRestaurada(), "");
}

}  // namespace
}  // namespace tarvoline::workflows
