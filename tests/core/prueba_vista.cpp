#include <gtest/gtest.h>

#include "core/barra.h"
#include "core/estado.h"
#include "core/formato.h"
#include "core/marcha.h"
#include "core/vista.h"

namespace tarvoline::core {
namespace {

// A grid with a heading and one row a name: column 2 the name, 3 its place, 7 the figure.
Rejilla rejillaCon(const std::vector<std::pair<std::string, std::string>>& filas) {
    Rejilla rejilla;
    rejilla.ponerFilas(static_cast<int>(filas.size()) + 1);
    rejilla.ponerCelda(0, 2, "zzz heading");
    int fila = 1;
    for (const auto& [nombre, cifra] : filas) {
        rejilla.ponerCelda(fila, 2, nombre);
        rejilla.ponerCelda(fila, 3, std::to_string(fila));
        rejilla.ponerCelda(fila++, 7, cifra);
    }
    return rejilla;
}

std::string columna(const Rejilla& rejilla, int cual) {
    std::string valores;
    for (int fila = 1; fila < rejilla.filas(); ++fila) {
        valores += rejilla.celda(fila, cual) + " ";
    }
    return valores;
}

TEST(Rejilla, OrdenaSinMoverLaCabeceraNiLosIguales) {
    Rejilla rejilla = rejillaCon({{"b", "10"}, {"ñ", "9"}, {"B", "10"}, {"z", "100"}, {"b", "9.5"}});
    rejilla.ordenar(2, true, false);
    EXPECT_EQ(columna(rejilla, 2), "B b b z ñ ") << "by code point";
    EXPECT_EQ(columna(rejilla, 3), "3 1 5 4 2 ");
    EXPECT_EQ(rejilla.celda(0, 2), "zzz heading");
    rejilla.ordenar(7, true, true);
    EXPECT_EQ(columna(rejilla, 7), "9 9.5 10 10 100 ") << "by number";
    EXPECT_EQ(columna(rejilla, 3), "2 5 3 1 4 ");
    rejilla.ordenar(7, false, true);
    EXPECT_EQ(columna(rejilla, 3), "4 3 1 5 2 ") << "equal rows keep their order downwards too";
    rejilla.ordenar(7, true, false);
    EXPECT_EQ(columna(rejilla, 7), "10 10 100 9 9.5 ") << "by text";
    Rejilla larga = rejillaCon(std::vector(60, std::pair<std::string, std::string>("igual", "1")));
    const auto antes = columna(larga, 3);
    larga.ordenar(7, false, true);
    EXPECT_EQ(columna(larga, 3), antes) << "also where there are many";
}

TEST(Rejilla, LoQueNoHayNoSeTocaNiSeOrdena) {
    Rejilla vacia;
    vacia.ordenar(2, true, false);
    vacia.ponerFilas(1);
    vacia.ordenar(2, true, true);
    EXPECT_EQ(vacia.filas(), 1);
    Rejilla rejilla = rejillaCon({{"b", ""}, {"a", ""}});
    rejilla.ordenar(9, true, false);
    rejilla.ordenar(-1, true, false);
    for (const auto& [fila, col] : {std::pair{-1, 2}, {3, 2}, {1, -1}, {1, 9}}) {
        rejilla.ponerCelda(fila, col, "x");
        EXPECT_EQ(rejilla.celda(fila, col), "");
    }
    for (const int fila : {0, 3, -1}) {
        rejilla.quitarFila(fila);
    }
    EXPECT_EQ(columna(rejilla, 2), "b a ");
    rejilla.ponerFilas(-3);
    EXPECT_EQ(rejilla.filas(), 0);
}

// As a deletion does it: the row at one and the same place, as often as rows were chosen.
TEST(Rejilla, QuitarFilasDejaLaEleccionALlamador) {
    Rejilla rejilla = rejillaCon({{"a", ""}, {"b", ""}, {"c", ""}, {"d", ""}});
    rejilla.Row = 2;
    rejilla.RowSel = 4;
    for (int fila = rejilla.Row; fila <= rejilla.RowSel; ++fila) {
        rejilla.quitarFila(rejilla.Row);
    }
    EXPECT_EQ(columna(rejilla, 2), "a ");
    EXPECT_EQ(rejilla.Row, 2);
    EXPECT_EQ(rejilla.celda(rejilla.Row, 2), "");
    rejilla.vaciar();
    EXPECT_EQ(rejilla.filas(), 0);
    EXPECT_EQ(rejilla.Row, 0);
    EXPECT_EQ(rejilla.RowSel, 0);
}

struct PruebaBarra : testing::Test {
    Estado estado;
    Vista vista;
    int avisos = 0;

    void SetUp() override {
        estado.gModoGauge = modo_gauge::ventanaPrincipal;
        vista.alCambiar = [this](Parte parte) { avisos += parte == Parte::medidor ? 1 : 0; };
    }
    int dibujar(double valor, std::optional<double> total = std::nullopt) {
        Barra(estado, vista, valor, total);
        return vista.medidor.porcentaje;
    }
};

TEST_F(PruebaBarra, ElPorcentajeSeCorta) {
    struct {
        double valor;
        std::optional<double> total;
        int porcentaje;
    } const casos[] = {{5, {}, 0},      {5, 0, 0},    {150, 100, 100}, {999, 1000, 99},     {1, 3, 33},
                       {100, 100, 100}, {-5, 100, 0}, {-1, {}, 0},     {1e308, 1e-308, 100}};
    for (const auto& caso : casos) {
        EXPECT_EQ(dibujar(caso.valor, caso.total), caso.porcentaje) << caso.valor;
        EXPECT_TRUE(vista.medidor.visible);
    }
    dibujar(0);
    EXPECT_FALSE(vista.medidor.visible) << "the end";
    EXPECT_EQ(avisos, 10);
}

TEST_F(PruebaBarra, ModosEspeciales) {
    estado.gModoGauge = modo_gauge::ninguno;
    dibujar(7, 10);
    EXPECT_FALSE(vista.medidor.visible);
    EXPECT_EQ(avisos, 0);
    estado.gModoGauge = modo_gauge::finVisible;
    EXPECT_EQ(dibujar(7, 10), 70);
    EXPECT_EQ(dibujar(0), 70);
    EXPECT_TRUE(vista.medidor.visible) << "the end call leaves it on show";
    estado.gModoGauge = modo_gauge::limpiarPrimero;
    EXPECT_EQ(dibujar(7, 10), 0);
    EXPECT_TRUE(vista.medidor.visible);
    estado.gModoGauge = modo_gauge::sinDuenio;
    EXPECT_EQ(dibujar(7, 10), 70);
    dibujar(0);
    EXPECT_FALSE(vista.medidor.visible);
}

TEST(TablaErrores, SeLeeDeCeroAMil) {
    const TablaErrores errores;
    EXPECT_EQ(errores(180), "Error de protección en indexados ... Debe Reiniciar Windows");
    EXPECT_EQ(errores(0), "");
    EXPECT_EQ(errores(1000), "");
    EXPECT_THROW(errores(1001), std::out_of_range);
    EXPECT_THROW(errores(-1), std::out_of_range);
}

TEST(PruebaMarcha, SoloDiceLoQueSabe) {
    Transferencia t;
    EXPECT_EQ(textoMarcha(t, 100, true), "") << "nothing runs";
    t.activa = true;
    t.total = 10 * 262144;
    t.piezas = 2;
    t.hecho = 2 * 262144;
    t.segundos = 1;
    EXPECT_EQ(textoMarcha(t, 100, true), "Tiempo restante desconocido");
    t.piezas = 4;
    t.hecho = 8 * 262144;  // half of it in an earlier run: 1 MB of today in one second, 0.5 MB to go
    EXPECT_EQ(textoMarcha(t, 100, true), formatoImporte(1) + " MB/s, quedan 0:01");
    t.segundos = 4 * 3600;
    EXPECT_EQ(textoMarcha(t, 100, false), formatoImporte(0) + " MB/s, 2:00:00 left");
    t.esperandoServicio = true;
    t.esperaDesde = 99;
    EXPECT_EQ(textoMarcha(t, 100, false), formatoImporte(0) + " MB/s, 2:00:00 left")
        << "a call may take a while";
    EXPECT_EQ(textoMarcha(t, 174, true), "Esperando al servicio desde hace 1:15");
}

}  // namespace
}  // namespace tarvoline::core
