#include "workflows/historico.h"

#include <gtest/gtest.h>

#include "workflows/mundo_servicio.h"

namespace tarvoline::workflows {
namespace {

class PruebaHistorico : public ::testing::Test {
  protected:
    std::string fila(int cual) const {
        std::string celdas;
        for (int columna = 3; columna <= 7; ++columna) {
            celdas += rejilla.celda(cual, columna) + "|";
        }
        return celdas;
    }

    pruebas::MundoServicio mundo;
    core::Rejilla& rejilla = mundo.vista().fx1;
    Historico& historico = mundo.flujos.historico();
};

TEST_F(PruebaHistorico, CadaRegistroEnSuFila) {
    historico.ListarHistorico();
    EXPECT_EQ(rejilla.filas(), 2) << "an empty history keeps one row";
    mundo.servicio.responder("LeerHistorico",
                             "1@/31/01/2024 09:05:59@/maria ha subido la empresa A.QZT@/ DATOS "
                             "| |2@/2024-02-01 10:00:00@/luis@/VENTAS|3@/ayer@/eva@/X");
    historico.ListarHistorico();
    ASSERT_EQ(rejilla.filas(), 5);
    EXPECT_EQ(fila(0), "<1671>|<2225>|<2220>|||");
    EXPECT_EQ(fila(1), "maria ha subido la empresa A.QZT|31/01/2024 09:05|DATOS|202401310905|DATOS|");
    EXPECT_EQ(fila(2), "|||||") << "a blank record keeps its row";
    EXPECT_EQ(fila(3), "luis|2024-02-01 10:00|VENTAS|202402011000|VENTAS|");
    EXPECT_EQ(fila(4), "eva|a|X|a|X|") << "a date that is none is only cut";

    mundo.servicio.responder("LeerHistorico", "ERROR:no");
    historico.ListarHistorico();
    EXPECT_EQ(rejilla.filas(), 5) << "as it was";
    EXPECT_TRUE(mundo.guion().sucesos.empty());
}

TEST_F(PruebaHistorico, LaLineaVaConElUsuarioEnVigor) {
    mundo.estado().gUsuario = "empresa7";
    historico.GrabarEntradaHistorico("empresa7 ha subido la empresa B");
    EXPECT_EQ(mundo.servicio.llamadas("GrabarHistorico").at(0).texto(0), "empresa7");
    EXPECT_EQ(mundo.estado().gUsuario, "empresa7") << "the session's user must not come back here";
    mundo.servicio.responder("GrabarHistorico", "ERROR:no hay sitio");
    EXPECT_EQ(historico.GrabarEntradaHistorico("x"), "");
    EXPECT_EQ(mundo.guion().ultimo().texto, "ERROR:no hay sitio");
    EXPECT_EQ(mundo.guion().ultimo().icono, core::Icono::exclamacion);
    mundo.estado().gRefrescando = true;
    historico.GrabarEntradaHistorico("nada");
    EXPECT_EQ(mundo.historia().size(), 2U);
}

}  // namespace
}  // namespace tarvoline::workflows
