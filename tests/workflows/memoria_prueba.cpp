// A very large file up and down: the memory of the process must not follow it.
#include <gtest/gtest.h>

#include <filesystem>

#include "apoyo/servicio_proceso.h"
#include "workflows/proceso_subidor.h"

namespace tarvoline::workflows {
namespace {

TEST(Memoria, UnArchivoDe1900MegasSubeYBajaEn64) {
    constexpr std::uintmax_t longitud = std::uintmax_t{1900} * 1024 * 1024 + 3;
    constexpr long limite = 64 * 1024;
    pruebas::ServicioProceso servicio;
    servicio.alta("maria", "secreta", "CUENTA1", 10);
    pruebas::OpcionesNucleo opciones;
    opciones.ajustesEnArchivo = true;
    pruebas::MundoFlujos mundo(opciones);
    const auto ruta = mundo.nucleo.carpeta().escribir("enorme.bin", "comienzo");
    std::filesystem::resize_file(ruta, longitud);

    const auto subida = pruebas::subidor(mundo, servicio.url(), {"nuevo", ruta, "PERSONAL"});
    ASSERT_EQ(subida.codigo, 0) << subida.salida;
    EXPECT_GT(subida.memoria, 0);
    EXPECT_LT(subida.memoria, limite);
    std::filesystem::remove(ruta);
    const auto vuelta = mundo.nucleo.ruta("vuelta.bin");
    const auto bajada = pruebas::subidor(mundo, servicio.url(), {"bajar", "enorme.bin", "PERSONAL", vuelta});
    ASSERT_EQ(bajada.codigo, 0) << bajada.salida;
    EXPECT_LT(bajada.memoria, limite);
    EXPECT_EQ(std::filesystem::file_size(vuelta), longitud);
    RecordProperty("subida_kib", static_cast<int>(subida.memoria));
    RecordProperty("bajada_kib", static_cast<int>(bajada.memoria));
    RecordProperty("subida_segundos", subida.segundos);
    RecordProperty("bajada_segundos", bajada.segundos);
}

}  // namespace
}  // namespace tarvoline::workflows
