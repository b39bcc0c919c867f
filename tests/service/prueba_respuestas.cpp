#include "service/respuestas.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace tarvoline::service {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Respuestas, CodigoDeCuenta) {
    for (const auto& [respuesta, codigo] : std::initializer_list<std::pair<const char*, const char*>>{
             {"1-maria-ABC12-Nombre", "ABC12"},
             {"1-maria- ABC12 ", "ABC12"},
             {"1-maria--x|2-luis-DEF|3-eva-GHI", "DEF"},
             {" |1-maria-ABC", "ABC"},
             {"1-maria-|2-luis-", ""},
             {"|", ""},
             {"", ""},
             {"maria", ""}}) {
        EXPECT_EQ(codigoDeDatosUsuario(respuesta), codigo) << respuesta;
    }
}

TEST(Respuestas, UsuariosDeUnaCuenta) {
    const auto usuarios = leerUsuariosCuenta("0- maria -secreta-María Pérez| |0-luis-otra|");
    ASSERT_EQ(usuarios.size(), 2U);
    EXPECT_EQ(usuarios[0].usuario, "maria");
    EXPECT_EQ(usuarios[0].password, "secreta");
    EXPECT_EQ(usuarios[0].etiqueta, "María Pérez");
    EXPECT_EQ(usuarios[1].password, "otra");
    EXPECT_EQ(usuarios[1].etiqueta, "");
    EXPECT_THAT(leerUsuariosCuenta(""), IsEmpty());
}

TEST(Respuestas, HistoricoConUnHueco) {
    const auto entradas = leerHistorico("7@/01/02/2024 10:11:12@/ana ha subido@/DATOS| |8@/x");
    ASSERT_EQ(entradas.size(), 3U);
    EXPECT_EQ(entradas[0].momento, "01/02/2024 10:11:12");
    EXPECT_EQ(entradas[0].texto, "ana ha subido");
    EXPECT_EQ(entradas[0].columna, "DATOS");
    EXPECT_EQ(entradas[1].texto, "");
    EXPECT_EQ(entradas[2].momento, "x");
    EXPECT_THAT(leerHistorico(""), IsEmpty());
}

TEST(Respuestas, Nombres) {
    EXPECT_THAT(leerNombres("uno\tdos\t\ttres\t"), ElementsAre("uno", "dos", "tres"));
    EXPECT_THAT(leerNombres(""), IsEmpty());
}

TEST(Respuestas, TamanoDe32Bits) {
    EXPECT_EQ(leerTamano("2147483647"), 2147483647);
    EXPECT_EQ(leerTamano(" 0 "), 0);
    for (const char* enorme : {"2147483648", "99999999999999999999"})
        EXPECT_THROW(leerTamano(enorme), std::overflow_error) << enorme;
    for (const char* ninguno : {"", "-1", "x", "12 bytes", "1e3", "12.5"})
        EXPECT_THROW(leerTamano(ninguno), std::invalid_argument) << ninguno;
}

}  // namespace
}  // namespace tarvoline::service
