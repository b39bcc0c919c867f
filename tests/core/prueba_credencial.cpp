#include <gtest/gtest.h>

#include <random>
#include <set>
#include <stdexcept>

#include "core/credencial.h"

namespace tarvoline::core {
namespace {

// Gives these values one after the other; asking for more is a fault.
FuenteAleatoria fija(std::vector<int> valores) {
    return [valores = std::move(valores), i = std::size_t{0}]() mutable { return valores.at(i++); };
}

FuenteAleatoria constante(int valor) {
    return [valor] { return valor; };
}

std::string alfanumerico(std::mt19937& azar, std::size_t longitud) {
    std::string texto(longitud, '\0');
    for (char& letra : texto) {
        letra = ValorACaracter(1 + static_cast<int>(azar() % 62));
    }
    return texto;
}

TEST(Credencial, ElAlfabetoVaYVuelve) {
    std::string alfabeto;
    for (int valor = 1; valor <= 62; ++valor) {
        alfabeto += ValorACaracter(valor);
        EXPECT_EQ(CaracterAValor(alfabeto.back()), valor);
    }
    EXPECT_EQ(alfabeto, "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    for (const char ajeno : {'\0', '-', '/', ':', '@', '[', '`', '{', '\xF1'}) {
        EXPECT_EQ(CaracterAValor(ajeno), 0);
    }
    EXPECT_EQ(ValorACaracter(0), '\0');
    EXPECT_EQ(ValorACaracter(63), '\0');
}

// Worked by hand. "Ab9": values 11, 38, 10; fillers 1, 62, 60 at positions 1, 2, 3.
//   1: 1+11+1 = 13 -> C, filler 1 -> 0
//   2: 62+38+2 = 102 -> 40 -> d, filler 62 -> z
//   3: 60+10+3 = 73 -> 11 -> A, filler 60 -> x
// K even: the sum stands in front at positions 1 and 3, the filler at 2; K odd: the other way round.
// "zz": the sums 62+62+1 = 125 and 62+62+2 = 126 are brought down to 123 by lowering the filler to 60 and 59;
// 123-62 = 61 -> y.
TEST(Credencial, CasosHechosAMano) {
    EXPECT_EQ(CodificarClave("Ab9", fija({2, 1, 62, 60})), "CzA10dx");
    EXPECT_EQ(CodificarClave("  Ab9 ", fija({1, 1, 62, 60})), "0dx0CzA") << "blanks at the ends do not count";
    EXPECT_EQ(CodificarClave("zz", constante(62)), "ywzxy");
    EXPECT_EQ(DecodificarClave("ywzxy"), "zz");
    EXPECT_EQ(CodificarClave("   ", fija({37})), "a") << "nothing but the key";
    EXPECT_EQ(DecodificarClave("a"), "");
}

TEST(Credencial, UnaLetraAjenaCuentaUnaPosicion) {
    const auto texto = DecodificarClave(CodificarClave("año", constante(5)));
    ASSERT_TRUE(texto);
    EXPECT_EQ(texto->size(), 3U);
    EXPECT_EQ(texto->front(), 'a');
    EXPECT_EQ(texto->back(), 'o');
    // Filler and position past 61: the foreign letter cannot be taken for a "z".
    EXPECT_EQ(DecodificarClave(CodificarClave("-", fija({1, 61}))), std::string(1, '\0'));
    EXPECT_EQ(DecodificarClave(CodificarClave("z", fija({1, 61}))), "z");
}

TEST(Credencial, DecodificarDeshaceCodificar) {
    const unsigned semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    const FuenteAleatoria fuente = fuenteAleatoria();
    for (std::size_t longitud = 1; longitud <= 60; ++longitud) {
        for (int vuelta = 0; vuelta < 40; ++vuelta) {
            const std::string texto = alfanumerico(azar, longitud);
            const std::string credencial = CodificarClave(texto, fuente);
            EXPECT_EQ(credencial.size(), 2 * longitud + 1);
            EXPECT_EQ(credencial.find('\0'), std::string::npos);
            EXPECT_EQ(DecodificarClave(credencial), texto);
        }
        for (int relleno = 1; relleno <= 62; ++relleno) {
            for (const char letra : {'0', 'y', 'z'}) {
                const std::string texto(longitud, letra);
                EXPECT_EQ(DecodificarClave(CodificarClave(texto, constante(relleno))), texto)
                    << "filler " << relleno << ", length " << longitud;
            }
        }
    }
}

TEST(Credencial, TextosLargosHastaElDesborde) {
    // At position 61 a "z" leaves filler 0; at 62 there is none left to take.
    const std::string justo(61, 'z');
    EXPECT_EQ(DecodificarClave(CodificarClave(justo, constante(62))), justo);
    EXPECT_THROW(CodificarClave(std::string(62, 'z'), constante(62)), std::overflow_error);
    EXPECT_NO_THROW(CodificarClave(std::string(62, 'y'), constante(62)));
}

TEST(Credencial, LoQueNoEsCredencialSeRechaza) {
    using namespace std::string_literals;
    for (const auto& mala : {""s, "ab"s, "-"s, "a-c"s, "ab-"s, "-bc"s, "ñ"s, "\0"s, "\0a\0"s}) {
        EXPECT_EQ(DecodificarClave(mala), std::nullopt) << testing::PrintToString(mala);
    }
    const unsigned semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    for (int vuelta = 0; vuelta < 2000; ++vuelta) {
        const std::string texto = alfanumerico(azar, azar() % 200);
        EXPECT_EQ(DecodificarClave(texto).has_value(), texto.size() % 2 == 1) << texto;
    }
}

TEST(Credencial, LaFuenteCubreSusValoresYSusCopiasNoSeRepiten) {
    const FuenteAleatoria fuente = fuenteAleatoria();
    const auto valores = BytesAleatorios(20000, fuente);
    const std::set<int> vistos(valores.begin(), valores.end());
    EXPECT_EQ(vistos.size(), 62U);
    EXPECT_EQ(*vistos.begin(), 1);
    EXPECT_EQ(*vistos.rbegin(), 62);
    const FuenteAleatoria copia = fuente;
    EXPECT_NE(BytesAleatorios(40, fuente), BytesAleatorios(40, copia));
}

TEST(Nombre, SeEscapaPorLaPaginaDeCodigos) {
    EXPECT_EQ(CodificarNombre("Año & Cía.zip"), "A&#241;o &#38; C&#237;a.zip");
    EXPECT_EQ(CodificarNombre("€Ω\x7F"), "&#128;&#937;&#127;");
    EXPECT_EQ(CodificarNombre("<a> \"b\"#;"), "<a> \"b\"#;");
    EXPECT_EQ(CodificarNombre("a\xF1o"), "a&#241;o");
    for (const char* nombre :
         {"", "&#38;", "&#38;#38;", "&&#", "&#241", "€uro 漢😀.qzt", "Espan\u0303a", "–“”Œÿ\u0081", "a\tb"}) {
        EXPECT_EQ(DecodificarNombre(CodificarNombre(nombre)), nombre);
    }
    for (const char* sinReferencia : {"&#;", "&#0;", "&#xF1;", "&#-5;", "&#55296;", "&#1114112;",
                                      "&#99999999999999999999;", "&#241", "&amp;", "ñ"}) {
        EXPECT_EQ(DecodificarNombre(sinReferencia), sinReferencia);
    }
}

}  // namespace
}  // namespace tarvoline::core
