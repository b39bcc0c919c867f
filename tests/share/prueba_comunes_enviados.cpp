// The currency tables and VAT rates that ship.
#include <gtest/gtest.h>

#include <set>

#include "data/monedas.h"
#include "data/tipos_iva.h"
#include "platform/archivos.h"

namespace tarvoline::pruebas {
namespace {

using namespace data;

std::string enviado(const std::string& nombre) {
    const auto archivos = platform::crearSistemaArchivos();
    return platform::leerTodo(*archivos, std::string(TARVOLINE_PROGRAMA) + "/" + nombre);
}

TEST(ComunesEnviados, Monedas) {
    const auto bytes = enviado("Moneda1.QZF");
    EXPECT_EQ(bytes.size(), 640U);
    const auto euros = interpretarMonedas(bytes);
    EXPECT_EQ(euros[0], (FilaMoneda{2, "EURO", "EUR", "", 0, 1, 2}));
    EXPECT_EQ(euros[1], (FilaMoneda{0, "PESETA", "PTS", "", 0, 0.006, 0}));
    const auto pesetas = interpretarMonedas(enviado("Moneda.QZF"));
    EXPECT_EQ(pesetas[0], (FilaMoneda{0, "PESETA", "PTS", "", 0, 1, 0}));
    EXPECT_EQ(pesetas[1], (FilaMoneda{2, "EURO", "EUR", "", 0, 166.386, 2}));
    for (std::size_t i = 2; i < numeroMonedas; ++i) {
        EXPECT_TRUE(euros[i].libre() && pesetas[i].libre()) << i;  // where unknown currencies are entered
    }
}

// Who gives a percentage gets the first rate whose tax and surcharge add up to it.
int tipoDe(const TiposIva& tipos, float porcentaje) {
    for (int i = 1; i <= tipos.cuantos(); ++i) {
        if (tipos(i).Cuota + tipos(i).Recargo == porcentaje) return i;
    }
    return 0;
}

TEST(ComunesEnviados, TiposDeIva) {
    const TiposIva tipos(enviado("IVA03.QZF"));
    const struct {
        float porcentaje, cuota, recargo;
    } casos[] = {{21, 21, 0},     {10, 10, 0},     {4, 4, 0},  {26.2F, 21, 5.2F}, {11.4F, 10, 1.4F},
                 {4.5F, 4, 0.5F}, {7, 7, 0},       {3, 3, 0},  {8, 8, 0},         {16, 16, 0},
                 {20, 20, 0},     {9.5F, 9.5F, 0}, {22, 18, 4}};
    for (const auto& caso : casos) {
        const auto& tipo = tipos(tipoDe(tipos, caso.porcentaje));
        EXPECT_EQ(tipo.Cuota, caso.cuota) << caso.porcentaje;
        EXPECT_EQ(tipo.Recargo, caso.recargo) << caso.porcentaje;
    }
    // Numbers that entries are kept under.
    EXPECT_EQ(tipoDe(tipos, 21), 1);
    EXPECT_EQ(tipoDe(tipos, 10), 2);
    EXPECT_EQ(tipoDe(tipos, 4), 3);
}

TEST(ComunesEnviados, CadaTipoTieneSuNombre) {
    const TiposIva tipos(enviado("IVA03.QZF"));
    std::set<std::pair<std::string, float>> vistos;
    for (int i = 1; i <= tipos.cuantos(); ++i) {
        EXPECT_FALSE(tipos(i).Descripción.empty()) << i;
        EXPECT_TRUE(vistos.emplace(tipos(i).Descripción, tipos(i).Cuota).second) << tipos(i).Descripción;
        // What stands before a "+" would count as the whole name.
        EXPECT_EQ(tipos(i).Descripción.find('+'), std::string::npos);
    }
}

}  // namespace
}  // namespace tarvoline::pruebas
