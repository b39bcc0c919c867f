#include <gtest/gtest.h>

#include <limits>

#include "core/formato.h"

namespace tarvoline::core {
namespace {

const SeparadoresNumero espanol{".", ","};

TEST(Formato, ImportesYEnteros) {
    const std::pair<double, const char*> importes[] = {{1234567.891, "1.234.567,89"},
                                                       {999.995, "1.000,00"},
                                                       {0.125, "0,13"},
                                                       {-1234.5, "-1.234,50"},
                                                       {-0.001, "0,00"},  // no sign without a figure
                                                       {123, "123,00"},
                                                       {1e15, "1.000.000.000.000.000,00"},
                                                       {std::numeric_limits<double>::infinity(), "0,00"}};
    for (const auto& [importe, texto] : importes) {
        EXPECT_EQ(formatoImporte(importe, espanol), texto);
    }
    EXPECT_EQ(formatoImporte(std::numeric_limits<double>::max(), {"", "."}).size(), 312U);
    EXPECT_EQ(formatoEntero(999, espanol), "999");
    EXPECT_EQ(formatoEntero(-1000, espanol), "-1.000");
    EXPECT_EQ(formatoEntero(std::numeric_limits<std::int64_t>::min(), espanol), "-9.223.372.036.854.775.808");
}

TEST(Formato, LosSeparadoresDelSistemaSeDistinguen) {
    const auto& separadores = separadoresLocales();
    EXPECT_FALSE(separadores.decimal.empty());
    EXPECT_FALSE(separadores.miles.empty());
    EXPECT_NE(separadores.decimal, separadores.miles);
}

TEST(Unidades, PotenciasDe1024) {
    EXPECT_EQ(ConvertirUnidad(1536.0, 0, 1), 1.5);
    EXPECT_EQ(ConvertirUnidad(2.0, 3, 2), 2048);
    EXPECT_EQ(ConvertirUnidad(1.0, 4, 0), 1099511627776.0);
    EXPECT_EQ(ConvertirUnidad(1048576.0, 0, unidadPantalla, 2), 1);
    EXPECT_EQ(ConvertirUnidad(7.0, 0, unidadPantalla, 5), 0);
    EXPECT_EQ(ConvertirUnidad(" 2048 ", 0, 1), 2);
    EXPECT_EQ(ConvertirUnidad("+2048", 0, 1), 2);
    for (const int mala : {-1, 5, 98, 100}) {
        EXPECT_EQ(ConvertirUnidad(7.0, mala, 0), 0) << mala;
        EXPECT_EQ(ConvertirUnidad(7.0, 0, mala), 0) << mala;
    }
    for (const char* malo : {"", "ERROR: no", "2048 bytes", "1e999", "inf", "nan", "+-5", "2 048"}) {
        EXPECT_EQ(ConvertirUnidad(malo, 0, 1), 0) << malo;
    }
}

}  // namespace
}  // namespace tarvoline::core
