#include "workflows/historico.h"

#include <gtest/gtest.h>

#include "workflows/listados.h"
#include "workflows/mundo_servicio.h"

namespace tarvoline::workflows {
namespace {

class PruebaHistorico : public ::testing::Test {
  protected:
    pruebas::MundoServicio mundo;
    core::Rejilla& rejilla = mundo.vista().fx1;
    Historico& historico = mundo.flujos.historico();
};

TEST_F(PruebaHistorico, CadaRegistroEnSuFila) {
    mundo.servicio.responder("LeerHistorico",
                             "1@/31/01/2024 09:05:59@/maria ha subido la empresa A.QZT@/ DATOS "
                             "| |2@/2024-02-01 10:00:00@/luis@/VENTAS|3@/ayer@/eva@/X");
    historico.ListarHistorico();
    ASSERT_EQ(rejilla.filas(), 5);
    EXPECT_EQ(rejilla.celda(0, 3), "<1671>");
    EXPECT_EQ(rejilla.celda(0, 4), "<2225>");
    EXPECT_EQ(rejilla.celda(0, 5), "<2220>");
    EXPECT_EQ(rejilla.anchos[3], -1);
    EXPECT_EQ(rejilla.anchos[4], 250);
    EXPECT_EQ(rejilla.anchos[5], 100);
    EXPECT_EQ(rejilla.celda(1, 3), "maria ha subido la empresa A.QZT");
    EXPECT_EQ(rejilla.celda(1, 4), "31/01/2024 09:05");
    EXPECT_EQ(rejilla.celda(1, 5), "DATOS");
    EXPECT_EQ(rejilla.celda(1, 6), "202401310905");
    EXPECT_EQ(rejilla.celda(1, 7), "DATOS");
    EXPECT_EQ(rejilla.celda(2, 3), "") << "a blank record keeps its row";
    EXPECT_EQ(rejilla.celda(3, 6), "202402011000");
    EXPECT_EQ(rejilla.celda(4, 4), "a") << "a date that is none is only cut";
    EXPECT_EQ(rejilla.celda(4, 6), "a");
}

TEST_F(PruebaHistorico, VacioYFallido) {
    historico.ListarHistorico();
    EXPECT_EQ(rejilla.filas(), 2);
    rejilla.ponerCelda(1, 3, "se queda");
    mundo.servicio.responder("LeerHistorico", "ERROR:no");
    historico.ListarHistorico();
    EXPECT_EQ(rejilla.celda(1, 3), "se queda");
    EXPECT_TRUE(mundo.guion().sucesos.empty());
}

TEST_F(PruebaHistorico, LaLineaVaConElUsuarioEnVigor) {
    mundo.estado().gUsuario = "empresa7";
    historico.GrabarEntradaHistorico("empresa7 ha subido la empresa B");
    EXPECT_EQ(mundo.servicio.llamadas("GrabarHistorico").at(0).texto(0), "empresa7");
    EXPECT_EQ(mundo.estado().gUsuario, "empresa7") << "the session's user must not come back here";
    mundo.estado().gRefrescando = true;
    historico.GrabarEntradaHistorico("nada");
    EXPECT_EQ(mundo.historia().size(), 1U);
}

TEST_F(PruebaHistorico, UnRechazoSeMuestraEntero) {
    mundo.servicio.responder("GrabarHistorico", "ERROR:no hay sitio");
    EXPECT_EQ(historico.GrabarEntradaHistorico("x"), "");
    EXPECT_EQ(mundo.guion().ultimo().texto, "ERROR:no hay sitio");
    EXPECT_EQ(mundo.guion().ultimo().icono, core::Icono::exclamacion);
}

}  // namespace
}  // namespace tarvoline::workflows
