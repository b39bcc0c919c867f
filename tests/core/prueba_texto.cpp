#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "core/texto.h"

namespace tarvoline::core {
namespace {

TEST(Ansi, TodosLosOctetosVanYVuelven) {
    std::string bytes;
    for (int octeto = 0; octeto < 256; ++octeto) {
        bytes += static_cast<char>(octeto);
    }
    const TextoAnsi ansi(bytes);
    EXPECT_EQ(longitudTexto(aUtf8(ansi)), 256U);
    EXPECT_EQ(aAnsi(aUtf8(ansi)), ansi);
}

TEST(Ansi, LetrasPorSuCodigo) {
    EXPECT_EQ(aAnsi("España €5 “Œuvre” – Ÿ").bytes(),
              "Espa\xF1"
              "a \x80"
              "5 \x93\x8C"
              "uvre\x94 \x96 \x9F");
    EXPECT_EQ(aUtf8(std::string_view("\x81\x80\xA0")), "\xC2\x81€\xC2\xA0");
    EXPECT_EQ(aAnsi("Ω漢😀").bytes(), "???");
    EXPECT_EQ(aAnsi("a\xF1o \xFF").bytes(), "a\xF1o \xFF") << "bytes that are Windows-1252 already";
}

TEST(Ansi, ComponeLosAcentosSueltos) {
    EXPECT_EQ(aAnsi("Espan\u0303a A\u030Angstro\u0308m c\u0327a \u017Calej").bytes(),
              "Espa\xF1"
              "a \xC5ngstr\xF6m \xE7"
              "a ?alej");
    EXPECT_EQ(aAnsi("Y\u0308 S\u030C z\u030C").bytes(), "\x9F \x8A \x9E");
    EXPECT_EQ(aAnsi("q\u0303 \u0301 1\u0308").bytes(), "q? ? 1?") << "no such letter in the code page";
    EXPECT_EQ(aAnsi("n\u0303\u0303").bytes(), "\xF1?") << "a second mark has no letter left";
}

TEST(Utf8, SoloAceptaFormasBuenas) {
    struct Caso {
        const char* bytes;
        std::u32string codigos;
    };
    const Caso casos[] = {
        {"\xC0\xAF", {0xC0, 0xAF}},                            // overlong "/"
        {"\xE0\x80\xAF", {0xE0, 0x80, 0xAF}},                  // overlong in three
        {"\xF0\x80\x80\xAF", {0xF0, 0x80, 0x80, 0xAF}},        // overlong in four
        {"\xED\xA0\x80", {0xED, 0xA0, 0x80}},                  // surrogate
        {"\xF4\x90\x80\x80", {0xF4, 0x90, 0x80, 0x80}},        // beyond Unicode
        {"\xC3", {0xC3}},                                      // cut
        {"\xF0\x9F\x98", {0xF0, 0x9F, 0x98}},                  // cut in four
        {"\xE2\x82z", {0xE2, 0x82, 'z'}},                      // cut by another character
        {"\xF4\x8F\xBF\xBF\xED\x9F\xBF", {0x10FFFF, 0xD7FF}},  // the good ones beside the bad
    };
    for (const auto& caso : casos) {
        EXPECT_EQ(codigos(caso.bytes), caso.codigos) << testing::PrintToString(std::string(caso.bytes));
    }
    EXPECT_EQ(deCodigos(U"añ€😀"), "añ€😀");
    EXPECT_EQ(deCodigos(std::u32string{0xD800, 0x110000}), "\uFFFD\uFFFD");
}

TEST(Utf8, BytesAlAzarNoSeSalenNiSePierden) {
    const unsigned semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    for (int vuelta = 0; vuelta < 2000; ++vuelta) {
        std::string bytes(azar() % 24, '\0');
        for (char& octeto : bytes) {
            octeto = static_cast<char>(azar() % 3 == 0 ? azar() : 0xC0U + azar() % 64);
        }
        const std::size_t letras = longitudTexto(bytes);
        EXPECT_EQ(codigos(bytes).size(), letras);
        std::string unidas;
        for (std::size_t i = 1; i <= letras; ++i) {
            unidas += Mid(bytes, i, 1);
        }
        EXPECT_EQ(unidas, bytes);
        EXPECT_TRUE(igualSinCaja(bytes, Mayusculas(bytes)));
    }
}

TEST(Texto, MidCuentaLetrasDesdeUno) {
    EXPECT_EQ(Mid("añ€o", 2, 2), "ñ€");
    EXPECT_EQ(Mid("año", 4, 5), "");
    EXPECT_EQ(Mid("año", 0, 2), "a");
    EXPECT_EQ(Mid("año", 0), "año");
    EXPECT_EQ(Mid("año", 1, 0), "");
}

TEST(Texto, MayusculasDeLetrasLatinas) {
    EXPECT_EQ(Mayusculas("español ÿ œ ž š ß ÷ µ ƒ ª ŀł ŉ"), "ESPAÑOL Ÿ Œ Ž Š ß ÷ µ ƒ ª ĿŁ ŉ");
    EXPECT_EQ(Minusculas("ESPAÑOL Ÿ Œ Ž Š × ÀÞ ŹŽ ĿŁ"), "español ÿ œ ž š × àþ źž ŀł");
    EXPECT_EQ(Mayusculas("a\xF1z"), "A\xF1Z") << "a byte that is no UTF-8 stays";
    EXPECT_TRUE(igualSinCaja("Año.QZT", "AÑO.qzt"));
    EXPECT_FALSE(igualSinCaja("año", "ano"));
    EXPECT_FALSE(igualSinCaja("\xF1", "ñ")) << "a lone byte is no letter";
}

TEST(Texto, PartirYSustituir) {
    using Partes = std::vector<std::string>;
    EXPECT_EQ(Partir("a@/b@/", "@/"), (Partes{"a", "b", ""}));
    EXPECT_EQ(Partir("", ","), (Partes{""}));
    EXPECT_EQ(Partir("a,b", ""), (Partes{"a,b"}));
    EXPECT_EQ(Sustituir("aaaa", "aa", "a"), "aa");
    EXPECT_EQ(Sustituir("abc", "", "x"), "abc");
    EXPECT_EQ(Sustituir("a&b&", "&", "&&"), "a&&b&&");
    EXPECT_EQ(Recortar("  a b\t "), "a b\t");
    EXPECT_FALSE(esError("error: no"));
    EXPECT_FALSE(esError("ERRO"));
    EXPECT_TRUE(esError("ERROR"));
}

TEST(Val, LeeElNumeroDelComienzo) {
    const std::pair<const char*, double> casos[] = {
        {"22", 22},        {"22abc", 22}, {"22 ", 22},  {"2 2", 22},   {"\t2\n2", 22}, {"1e3", 1000},
        {"1 E + 3", 1000}, {".5", .5},    {"5.", 5},    {"-3", -3},    {"- 3", -3},    {"+7", 7},
        {"1.2.3", 1.2},    {"1,5", 1},    {"", 0},      {"abc", 0},    {".", 0},       {"-.e5", 0},
        {"--3", 0},        {"1e", 1},     {"1e+", 1},   {"2e-1", .2},  {"&H10", 0},    {"inf", 0},
        {"nan", 0},        {"0x10", 0},   {"1e999", 0}, {"1e-999", 0}, {"12\r3", 12},  {"1d2", 1},
        {"1\xC2\xA0 2", 1}};
    for (const auto& [texto, valor] : casos) {
        EXPECT_EQ(Val(texto), valor) << '"' << texto << '"';
    }
}

TEST(Val, TextosEnormes) {
    EXPECT_EQ(Val(std::string(3'000'000, ' ') + "7"), 7);
    EXPECT_EQ(Val("0." + std::string(2'000'000, '0')), 0);
    EXPECT_EQ(Val(std::string(2'000'000, '0') + "5"), 5);
    EXPECT_EQ(Val(std::string(2'000'000, '9')), 0) << "too large for a double";
    EXPECT_EQ(Val("1e" + std::string(1'000'000, '9')), 0);
}

TEST(Val, EnteroRedondeaAlPar) {
    const std::pair<const char*, int> casos[] = {{"2.5", 2},          {"3.5", 4},
                                                 {"-2.5", -2},        {"2147483647.4", 2147483647},
                                                 {"2147483647.5", 0}, {"1e300", 0}};
    for (const auto& [texto, valor] : casos) {
        EXPECT_EQ(ValEntero(texto), valor) << texto;
    }
    EXPECT_EQ(ValEntero("-2147483648"), std::numeric_limits<std::int32_t>::min());
}

TEST(Texto, ConCeros) {
    EXPECT_EQ(conCeros(7, 2), "07");
    EXPECT_EQ(conCeros(123, 2), "123");
    EXPECT_EQ(conCeros(-7, 2), "-07");
    EXPECT_EQ(conCeros(std::numeric_limits<std::int64_t>::min(), 2), "-9223372036854775808");
}

}  // namespace
}  // namespace tarvoline::core
