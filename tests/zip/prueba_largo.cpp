// Files beyond 4 GiB: Zip64 in both directions. Sparse, so that it needs little disk until it is unpacked.
#include <gtest/gtest.h>

#include <cstdlib>

#include "apoyo/carpeta_prueba.h"
#include "zip/zip.h"

namespace tarvoline::zip {
namespace {

TEST(Largo, UnFicheroDeMasDe4GiB) {
    const pruebas::CarpetaPrueba carpeta;
    const auto archivos = platform::crearSistemaArchivos();
    constexpr std::uint64_t longitud = (std::uint64_t{4} << 30) + 12345;
    archivos->abrir(carpeta.ruta("ENORME"), platform::Apertura::nuevo)
        ->escribir(longitud - 3, platform::comoBytes("fin"));
    Zip zip(*archivos);
    zip.destino = carpeta.ruta("copia.zip");
    zip.nivel = 1;
    ASSERT_EQ(zip.comprimir(carpeta.ruta(), {"ENORME"}), codigo::bien);
    std::vector<EntradaListada> lista;
    ASSERT_EQ(zip.listar(lista), codigo::bien);
    ASSERT_EQ(lista.size(), 1U);
    EXPECT_EQ(lista[0].longitud, longitud);
    EXPECT_EQ(std::system(("unzip -tq '" + zip.destino + "'").c_str()), 0);
}

}  // namespace
}  // namespace tarvoline::zip
