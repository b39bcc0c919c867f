#include <gtest/gtest.h>

#include <string>

#include "platform/archivos.h"
#include "platform/caja.h"
#include "platform/rutas.h"

namespace tarvoline::platform {

struct CasoMascara {
    const char* nombre;
    const char* mascara;
    bool encaja;
};

TEST(Mascara, Casos) {
    const CasoMascara casos[] = {
        {"PLANC07.QZD", "?????07.*", true},
        {"planc07.qzd", "?????07.QZ?", true},
        {"PLANC07", "?????07.*", false},  // ".*" wants a point
        {"PLANC07.", "?????07.*", true},
        {"PLAC07.QZD", "?????07.*", false},
        {"PLANCH07.QZD", "?????07.*", false},
        {"AÑOÑÑ07.QZD", "?????07.*", true},  // characters, not bytes
        {"añoññ07.qzd", "AÑO??07.QZD", true},
        {"sinpunto", "*.*", true},
        {"sinpunto", "*.*x", false},
        {"sinpunto", "s*.*", false},
        {"a.b", "a*.*", true},
        {"", "*", true},
        {"", "", true},
        {"", "?", false},
        {"a", "", false},
        {"a", "a*", true},
        {"a", "a?", false},
        {"a", "**", true},
        {"abc", "*c", true},
        {"abcabd", "*ab?", true},
        {"abcabd", "*abc", false},
        {"aXbXc", "a*X?", true},
        {"mississippi", "m*iss*ip*i", true},
        {"mississippi", "m*iss*ix*", false},
        {"a[b].txt", "A[B].TXT", true},
        {"ab.txt", "[ab]?.txt", false},
        {"Ÿ\xC5\x92.zip", "ÿœ.ZIP", true},
        {"\xE9t\xE9.txt", "?t?.txt", true},  // bytes that are no UTF-8 count one each
        {"\xE9.txt", "\xC9.txt", false},
    };
    for (const auto& caso : casos) {
        EXPECT_EQ(coincideMascara(caso.nombre, caso.mascara), caso.encaja)
            << caso.nombre << "  " << caso.mascara;
    }
}

TEST(Mascara, MuchosAsteriscosNoCuestanTiempo) {
    std::string mascara;
    for (int i = 0; i < 200; ++i)
        mascara += "*a";
    EXPECT_FALSE(coincideMascara(std::string(5000, 'a') + "b", mascara));
    EXPECT_TRUE(coincideMascara(std::string(5000, 'a'), mascara));
}

TEST(Caja, PliegaLasLetrasLatinas) {
    EXPECT_EQ(plegarCaja("ÁÉÍÓÚÜÑÇ"), "áéíóúüñç");
    EXPECT_EQ(plegarCaja("ŒŸŠŽ"), "œÿšž");
    EXPECT_EQ(plegarCaja("ŁŐŰĞȘ"), "łőűğș");
    EXPECT_EQ(plegarCaja("×÷ß€"), "×÷ß€");
    EXPECT_EQ(plegarCaja("ẞẤ"), "ßấ");
    EXPECT_TRUE(igualPlegado("Año 2026", "AÑO 2026"));
    EXPECT_FALSE(igualPlegado("Año", "Ano"));
    EXPECT_FALSE(igualPlegado("a", ""));
    EXPECT_TRUE(menorPlegado("A", "a"));
    EXPECT_TRUE(menorPlegado("a", "B"));
    EXPECT_FALSE(menorPlegado("a", "A"));
}

TEST(Caja, LosBytesQueNoSonUtf8QuedanComoEstan) {
    // Loose continuation, cut sequence, overlong form, surrogate, beyond the last code point.
    for (const std::string raro :
         {"\x80", "a\xC3", "\xC0\x81", "\xE0\x81\x81", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"}) {
        EXPECT_EQ(plegarCaja(raro), raro);
        EXPECT_EQ(plegarCaja(raro + "Z"), raro + "z");
    }
    EXPECT_EQ(codigosDe("\xC3").size(), 1U);
    EXPECT_EQ(codigosDe("a\xF0\x9F\x98\x80z"), U"a\U0001F600z");
    EXPECT_NE(codigosDe("\xE9"), codigosDe("é"));
}

TEST(Rutas, CarpetaNombreYUnion) {
    EXPECT_EQ(carpetaDe("/a/b/c"), "/a/b");
    EXPECT_EQ(carpetaDe("/a\\b/"), "/a");
    EXPECT_EQ(carpetaDe("/a"), "/");
    EXPECT_EQ(carpetaDe("/"), "/");
    EXPECT_EQ(carpetaDe("a"), ".");
    EXPECT_EQ(nombreDe("/a/b//"), "b");
    EXPECT_EQ(nombreDe("C:\\a\\b.txt"), "b.txt");
    EXPECT_EQ(nombreDe("/"), "");
    EXPECT_EQ(unirRuta("/a", "b"), "/a/b");
    EXPECT_EQ(unirRuta("/a\\", "\\b"), "/a\\b");
    EXPECT_EQ(unirRuta("", "b"), "b");
}

}  // namespace tarvoline::platform
