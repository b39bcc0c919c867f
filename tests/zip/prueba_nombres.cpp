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
    EXPECT_EQ(TextoErrorZip(150, "Error de ruta"), "XcdErrorDiskFull (150)\nError de ruta");
    EXPECT_EQ(TextoErrorZip(1, "t"), "XcdWarningGeneral (10)\nt");
    EXPECT_EQ(TextoErrorZip(20, "t"), "XcdErrorMemory (120)\nt");
    const std::string doble = "XcdWarningEmptyZipFile (50) XcdErrorNoZipFile (100)\nt";
    EXPECT_EQ(TextoErrorZip(50, "t"), doble);
    EXPECT_EQ(TextoErrorZip(100, "t"), doble);
    EXPECT_EQ(TextoErrorZip(280, "Error de ruta"), "Error de ruta (ERROR 280)\nError de ruta");
    EXPECT_EQ(TextoErrorZip(420, "t"), "XcdErrorWrongDisk (420)\nt");
    EXPECT_EQ(TextoErrorZip(999, "t"), "");
}

}  // namespace
}  // namespace tarvoline::zip
