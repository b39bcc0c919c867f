#include "workflows/panel.h"

#include <gtest/gtest.h>

#include "core/formato.h"
#include "workflows/mundo_flujos.h"

namespace tarvoline::workflows {
namespace {

class PruebaPanel : public ::testing::Test {
  protected:
    void esperarVentanaRepuesta() {
        EXPECT_FALSE(vista.ocupada || vista.bloqueada || vista.medidor.visible || guion.punteroEspera);
        EXPECT_EQ(vista.panel, 99);
        EXPECT_EQ(vista.NombreArchivo + vista.Progreso, "");
    }

    pruebas::MundoFlujos mundo;
    Panel& panel = mundo.flujos.panel();
    core::Vista& vista = mundo.nucleo.vista;
    core::Estado& estado = mundo.nucleo.estado;
    pruebas::EscritorioGuion& guion = mundo.nucleo.guion;
};

TEST_F(PruebaPanel, LaEntradaLimpiaLoDeAntesYReponeLaVentana) {
    estado.gDetener = estado.gInterrumpido = true;
    const auto ensuciar = [&] {
        EXPECT_FALSE(estado.gDetener || estado.gInterrumpido);
        guion.Puntero(true);
        panel.Desabilitar_Formulario(false);
        panel.Adaptar_imagenes(1);
        panel.Barra(30, 60);
        panel.MostrarProgreso("C:\\datos\\Año 1.zip", 5 * 1024 * 1024, 262145);
        EXPECT_TRUE(vista.ocupada && vista.bloqueada && !estado.gEnReposo);
        EXPECT_EQ(vista.medidor.porcentaje, 50);
        EXPECT_EQ(vista.NombreArchivo, "Año 1.zip");
        EXPECT_EQ(vista.Progreso, core::formatoEntero(262145) + " / " + core::formatoEntero(5242880));
        EXPECT_EQ(vista.Tamaño, core::formatoImporte(5) + " MB");
        estado.gInterrumpido = true;
    };
    EXPECT_TRUE(panel.entrada(ensuciar));
    esperarVentanaRepuesta();
    EXPECT_TRUE(estado.gInterrumpido) << "the outcome is left for whoever tells it";

    EXPECT_FALSE(panel.entrada([&] {
        ensuciar();
        throw std::runtime_error("línea cortada");
    }));
    esperarVentanaRepuesta();
    EXPECT_EQ(guion.ultimo().texto + "/" + guion.ultimo().titulo, "línea cortada/Tarvoline");
    EXPECT_EQ(guion.ultimo().icono, core::Icono::exclamacion);
    EXPECT_THROW(panel.entrada([] { throw core::FinDePrograma{}; }), core::FinDePrograma);
    EXPECT_EQ(guion.cajas().size(), 1U);
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

}  // namespace
}  // namespace tarvoline::workflows
