#include <gtest/gtest.h>

#include <limits>

#include "core/formato.h"

namespace tarvoline::core {
namespace {

const SeparadoresNumero espanol{".", ","};

TEST(Formato, ImportesConDosDecimales) {
    EXPECT_EQ(formatoImporte(0, espanol), "0,00");
    EXPECT_EQ(formatoImporte(1234567.891, espanol), "1.234.567,89");
    EXPECT_EQ(formatoImporte(999.995, espanol), "1.000,00");
    EXPECT_EQ(formatoImporte(0.125, espanol), "0,13");
    EXPECT_EQ(formatoImporte(-1234.5, espanol), "-1.234,50");
    EXPECT_EQ(formatoImporte(-0.001, espanol), "0,00") << "no sign without a figure";
    EXPECT_EQ(formatoImporte(123, espanol), "123,00");
    EXPECT_EQ(formatoImporte(1e15, espanol), "1.000.000.000.000.000,00");
    EXPECT_EQ(formatoImporte(std::numeric_limits<double>::infinity(), espanol), "0,00");
    EXPECT_EQ(formatoImporte(std::numeric_limits<double>::max(), {"", "."}).size(), 312U);
}

TEST(Formato, EnterosEnGruposDeTres) {
    EXPECT_EQ(formatoEntero(0, espanol), "0");
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
    EXPECT_EQ(ConvertirUnidad(5.0, 2, 2), 5);
    EXPECT_EQ(ConvertirUnidad(1048576.0, 0, unidadPantalla, 2), 1);
}

TEST(Unidades, LoQueNoEsUnidadNiNumeroDaCero) {
    for (const int mala : {-1, 5, 98, 100}) {
        EXPECT_EQ(ConvertirUnidad(7.0, mala, 0), 0) << mala;
        EXPECT_EQ(ConvertirUnidad(7.0, 0, mala), 0) << mala;
    }
    EXPECT_EQ(ConvertirUnidad(7.0, 0, unidadPantalla, 5), 0);
    EXPECT_EQ(ConvertirUnidad(" 2048 ", 0, 1), 2);
    EXPECT_EQ(ConvertirUnidad("+2048", 0, 1), 2);
    for (const char* malo : {"", "ERROR: no", "2048 bytes", "1e999", "inf", "nan", "+-5", "2 048"}) {
        EXPECT_EQ(ConvertirUnidad(malo, 0, 1), 0) << malo;
    }
}

}  // namespace
}  // namespace tarvoline::core
