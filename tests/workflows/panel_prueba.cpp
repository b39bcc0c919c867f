#include "workflows/panel.h"

#include <gtest/gtest.h>

#include "core/formato.h"
#include "workflows/mundo_flujos.h"

namespace tarvoline::workflows {
namespace {

class PruebaPanel : public ::testing::Test {
  protected:
    pruebas::MundoFlujos mundo;
    Panel& panel = mundo.flujos.panel();
    core::Vista& vista = mundo.nucleo.vista;
    core::Estado& estado = mundo.nucleo.estado;
};

TEST_F(PruebaPanel, LaEntradaLimpiaLoDeAntesYReponeLaVentana) {
    estado.gDetener = estado.gInterrumpido = true;
    EXPECT_TRUE(panel.entrada([&] {
        EXPECT_FALSE(estado.gDetener);
        EXPECT_FALSE(estado.gInterrumpido);
        EXPECT_TRUE(vista.ocupada);
        mundo.nucleo.guion.Puntero(true);
        panel.Desabilitar_Formulario(false);
        panel.Adaptar_imagenes(1);
        panel.Barra(30, 60);
        panel.MostrarProgreso("/a/b.zip", 100, 50);
        EXPECT_TRUE(vista.bloqueada);
        EXPECT_EQ(vista.medidor.porcentaje, 50);
        EXPECT_FALSE(estado.gEnReposo);
        estado.gInterrumpido = true;
    }));
    EXPECT_FALSE(vista.ocupada);
    EXPECT_FALSE(vista.bloqueada);
    EXPECT_FALSE(vista.medidor.visible);
    EXPECT_EQ(vista.panel, 99);
    EXPECT_EQ(vista.NombreArchivo, "");
    EXPECT_FALSE(mundo.nucleo.guion.punteroEspera);
    EXPECT_TRUE(estado.gInterrumpido) << "the outcome is left for whoever tells it";
}

TEST_F(PruebaPanel, UnErrorSeCuentaConLaVentanaYaRepuesta) {
    EXPECT_FALSE(panel.entrada([&] {
        panel.Desabilitar_Formulario(false);
        panel.Adaptar_imagenes(2);
        throw std::runtime_error("línea cortada");
    }));
    const auto caja = mundo.nucleo.guion.ultimo();
    EXPECT_EQ(caja.texto, "línea cortada");
    EXPECT_EQ(caja.titulo, "Tarvoline");
    EXPECT_EQ(caja.icono, core::Icono::exclamacion);
    EXPECT_FALSE(vista.bloqueada);
    EXPECT_EQ(vista.panel, 99);
    EXPECT_FALSE(vista.ocupada);
}

TEST_F(PruebaPanel, SoloUnaEntradaALaVez) {
    int corridas = 0;
    panel.entrada([&] {
        ++corridas;
        estado.gDetener = true;
        EXPECT_FALSE(panel.entrada([&] { ++corridas; }));
        EXPECT_TRUE(estado.gDetener) << "the second entry must not touch the first one's flags";
    });
    estado.gRefrescando = true;
    EXPECT_FALSE(panel.entrada([&] { ++corridas; }));
    EXPECT_EQ(corridas, 1);
}

TEST_F(PruebaPanel, ElFinDelProgramaPasa) {
    EXPECT_THROW(panel.entrada([] { throw core::FinDePrograma{}; }), core::FinDePrograma);
    EXPECT_TRUE(mundo.nucleo.guion.cajas().empty());
}

TEST_F(PruebaPanel, ProgresoDeUnaTransferencia) {
    panel.MostrarProgreso("C:\\datos\\Año 1.zip", 5 * 1024 * 1024, 262145);
    EXPECT_EQ(vista.NombreArchivo, "Año 1.zip");
    EXPECT_EQ(vista.Progreso, core::formatoEntero(262145) + " / " + core::formatoEntero(5242880));
    EXPECT_EQ(vista.Tamaño, core::formatoImporte(5) + " MB");
    panel.MostrarEmpaquetado("/d/EMPRESA.QZT");
    EXPECT_EQ(vista.Progreso, "Zip");
    panel.limpiarProgreso();
    EXPECT_EQ(vista.NombreArchivo + vista.Progreso, "");
}

TEST_F(PruebaPanel, LasTrazasSoloEnComprobacion) {
    panel.Traza("Load 01");
    estado.gModoComprobacion = true;
    panel.Traza("Load 02");
    ASSERT_EQ(mundo.nucleo.guion.cajas().size(), 1U);
    EXPECT_EQ(mundo.nucleo.guion.ultimo().texto, "Load 02");
}

}  // namespace
}  // namespace tarvoline::workflows
