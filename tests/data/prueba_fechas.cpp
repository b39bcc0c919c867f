// Dates as texts, form by form.
#include <gtest/gtest.h>

#include "apoyo/mundo_datos.h"
#include "data/fechas.h"

namespace {

using namespace tarvoline;
using data::FechaCompleta;
using data::FechaNormal;

class Fechas : public ::testing::Test {
  protected:
    Fechas() {
        auto& cabecera = mundo.capa.enVigor.cabecera;
        cabecera.poner(data::cabecera::AÑO, "13");
        cabecera.poner(data::cabecera::APERTURA, "04");
    }
    pruebas::MundoDatos mundo;
};

struct Caso {
    std::string entra, sale;
};

TEST_F(Fechas, NormalPorLongitud) {
    using namespace std::string_literals;
    for (const auto& [entra, sale] :
         std::initializer_list<Caso>{{"", ""},
                                     {"24", "C4"},
                                     {"59", "F9"},
                                     {"60", "60"},
                                     {"99", "99"},
                                     {"05/03", "B40305"},  // before the first month: the year after
                                     {"05/04", "B30405"},
                                     {"C41231", "31/12/24"},
                                     {"600101", "01/01/60"},
                                     {"J90101", "01/01/99"},
                                     {"K51231", "31/12/2105"},
                                     {"\0 123 "s, "00/00/00"},
                                     {"      ", "  /  /  "},
                                     {"1/02/24", "240201"},
                                     {"31/12/24", "C41231"},
                                     {"01/01/60", "600101"},
                                     {"01/01/00", "A00101"},
                                     {"  /  /  ", ""},
                                     {"31/12/024", "31/12/2024"},
                                     {"31/12/24 ", "31/12/2024"},
                                     {"12/31/2024", "31/12/24"},
                                     {"1", "ERROR"},
                                     {"31/12/20245", "ERROR"}}) {
        EXPECT_EQ(FechaNormal(mundo.capa, entra), sale) << '"' << entra << '"';
    }
    EXPECT_EQ(FechaNormal(mundo.capa, "C41231", true), "31/12/2024");
    EXPECT_EQ(FechaNormal(mundo.capa, "990101", true), "01/01/99");
}

TEST_F(Fechas, DeIdaYVuelta) {
    for (int anio = 0; anio < 100; ++anio) {
        const auto fecha = "28/02/" + core::conCeros(anio, 2);
        EXPECT_EQ(FechaNormal(mundo.capa, FechaNormal(mundo.capa, fecha)), fecha);
    }
    for (int anio = 1960; anio < 2160; ++anio) {
        const auto larga = "28/02/" + std::to_string(anio);
        const auto guardada = FechaCompleta(larga);
        EXPECT_EQ(FechaNormal(mundo.capa, guardada, true).substr(0, 6), "28/02/") << larga;
        if (anio >= 1981) {
            EXPECT_EQ(FechaCompleta(guardada), larga);
        }
    }
}

// Stored dates sort in the order of time.
TEST_F(Fechas, GuardadasOrdenan) {
    std::string anterior;
    for (int anio = 1960; anio < 2160; ++anio) {
        const auto guardada = FechaCompleta("01/06/" + std::to_string(anio));
        EXPECT_LT(anterior, guardada) << anio;
        anterior = guardada;
    }
}

TEST_F(Fechas, Completa) {
    for (const auto& [entra, sale] :
         std::initializer_list<Caso>{{"", ""},
                                     {"C41231", "31/12/2024"},
                                     {"801231", "31/12/2080"},  // the limit of posting is 81
                                     {"811231", "31/12/1981"},
                                     {"31/12/1999", "991231"},
                                     {"31/12/2024", "C41231"},
                                     {"31/12/1824", "ERROR"},
                                     {"31/12/24", "ERROR"}}) {
        EXPECT_EQ(FechaCompleta(entra), sale) << '"' << entra << '"';
    }
}

TEST_F(Fechas, AnioDelEjercicio) {
    EXPECT_EQ(data::AnoEjercicio(mundo.capa, "00"), "13");
    EXPECT_EQ(data::AnoEjercicio(mundo.capa, "03"), "14");
    EXPECT_EQ(data::AnoEjercicio(mundo.capa, "04"), "13");
    EXPECT_EQ(data::AnoEjercicio(mundo.capa, "14"), "13");
    mundo.capa.enVigor.cabecera.poner(data::cabecera::AÑO, "99");
    EXPECT_EQ(data::AnoEjercicio(mundo.capa, "01"), "00");
}

}  // namespace
