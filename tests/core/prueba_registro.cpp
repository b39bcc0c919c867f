// The log file: where it lies, who may read it, one line a text, and what happens without it.
#include <gtest/gtest.h>

#include <algorithm>

#include "apoyo/carpeta_prueba.h"
#include "core/registro_spdlog.h"

namespace tarvoline::pruebas {
namespace {

using std::filesystem::perms;

class PruebaRegistro : public testing::Test {
  protected:
    CarpetaPrueba carpeta;
    std::unique_ptr<platform::SistemaArchivos> archivos = platform::crearSistemaArchivos();
};

TEST_F(PruebaRegistro, EscribeEnSuArchivoYEnLaConsola) {
    testing::internal::CaptureStderr();
    const auto registro = core::crearRegistro(*archivos, carpeta.ruta("estado/tarvoline"));
    registro->info("uno");
    registro->aviso("dos\r\nfalso error: dos");
    registro->error("tres {} %s");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "info: uno\nwarning: dos  falso error: dos\nerror: tres {} %s\n");
    const auto escrito = carpeta.leer("estado/tarvoline/tarvoline.log");  // while the log is still open
    EXPECT_EQ(std::count(escrito.begin(), escrito.end(), '\n'), 3) << "a text is one line";
    EXPECT_NE(escrito.find("dos  falso error: dos\n"), std::string::npos);
    EXPECT_NE(escrito.find(" error ["), std::string::npos);
    EXPECT_EQ(std::filesystem::status(carpeta.ruta("estado/tarvoline")).permissions(), perms::owner_all);
    EXPECT_EQ(std::filesystem::status(carpeta.ruta("estado/tarvoline/tarvoline.log")).permissions(),
              perms::owner_read | perms::owner_write);
}

TEST_F(PruebaRegistro, SinConsolaOSinArchivoQuedaLoOtro) {
    testing::internal::CaptureStderr();
    core::crearRegistro(*archivos, carpeta.ruta(), "copias", false)->error("uno");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_NE(carpeta.leer("copias.log").find("uno"), std::string::npos);
    const auto ocupado = carpeta.escribir("ocupado", "a file where the folder should be");
    testing::internal::CaptureStderr();
    core::crearRegistro(*archivos, ocupado, "tarvoline", false)->info("sigue");
    const auto escrito = testing::internal::GetCapturedStderr();
    EXPECT_NE(escrito.find("warning: no log file: "), std::string::npos);
    EXPECT_NE(escrito.find("info: sigue\n"), std::string::npos);
}

TEST_F(PruebaRegistro, LosArchivosLlenosRotanYNoPasanDeSuNumero) {
    const auto registro = core::crearRegistro(*archivos, carpeta.ruta(), "lleno", false);
    const std::string largo(64 * 1024, 'x');
    const auto lineas = core::bytesRegistro / largo.size() * (core::archivosRegistro + 3);
    for (std::size_t i = 0; i < lineas; ++i) {
        registro->info(largo);
    }
    std::size_t cuantos = 0;
    for (const auto& entrada : std::filesystem::directory_iterator(carpeta.ruta())) {
        ++cuantos;
        EXPECT_LE(entrada.file_size(), core::bytesRegistro);
        EXPECT_EQ(entrada.status().permissions(), perms::owner_read | perms::owner_write) << entrada.path();
    }
    EXPECT_EQ(cuantos, core::archivosRegistro + 1);
}

}  // namespace
}  // namespace tarvoline::pruebas
