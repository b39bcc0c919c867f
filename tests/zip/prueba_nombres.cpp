#include "zip/nombres.h"

#include <gtest/gtest.h>

#include "zip/zip.h"

namespace tarvoline::zip {
namespace {

TEST(Nombres, CP850) {
    EXPECT_EQ(desdeCP850("A\xA4o \xA0\x82\xA1\xA2\xA3 \x9A \xD5 \xB0\xFE"), "Año áéíóú Ü ı ░■");
}

TEST(Nombres, RelativosAlEmpaquetar) {
    EXPECT_EQ(nombreRelativo("C:\\datos\\fotos"), "datos/fotos");
    EXPECT_EQ(nombreRelativo("//srv/./x/../y"), "srv/x/y");
    EXPECT_EQ(nombreRelativo("a:b"), "b");
    EXPECT_EQ(nombreRelativo("a..b"), "a..b");
}

TEST(Nombres, SegurosAlDesempaquetar) {
    EXPECT_EQ(rutaSegura("a//./b\\c"), "a/b/c");
    EXPECT_EQ(rutaSegura("..a/b.."), "..a/b..");
    const std::vector<std::string> malos{
        "",    "/",     "../a",  "a/../../b", "a\\..\\..\\b",        "/etc/x", "\\a", "C:\\x",
        "c:x", ".. /a", "a/...", "./..",      std::string("a\0b", 3)};
    for (const auto& malo : malos)
        EXPECT_FALSE(rutaSegura(malo)) << malo;
}

TEST(TextoErrorZip, LaPrimeraEntradaQueContieneLasCifras) {
    const std::string doble = "XcdWarningEmptyZipFile (50) XcdErrorNoZipFile (100)\nt";
    for (const auto& [codigo, texto] :
         std::initializer_list<std::pair<int, std::string>>{{150, "XcdErrorDiskFull (150)\nt"},
                                                            {1, "XcdWarningGeneral (10)\nt"},
                                                            {20, "XcdErrorMemory (120)\nt"},
                                                            {50, doble},
                                                            {100, doble},
                                                            {280, "t (ERROR 280)\nt"},
                                                            {420, "XcdErrorWrongDisk (420)\nt"},
                                                            {999, ""}}) {
        EXPECT_EQ(TextoErrorZip(codigo, "t"), texto);
    }
}

}  // namespace
}  // namespace tarvoline::zip
