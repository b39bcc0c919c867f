// When a file need not be read again.
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/marca_archivo.h"
#include "sistemas.h"

namespace tarvoline::pruebas {

using namespace platform;

TEST(MarcaArchivo, ValeParaElMismoArchivoQuieto) {
    namespace fs = std::filesystem;
    CarpetaPrueba carpeta;
    const auto archivos = crearSistemaArchivos();
    const std::string ruta = carpeta.escribir("a", "uno");
    const auto fechar = [&](const std::string& de) {
        fs::last_write_time(de, fs::file_time_type::clock::now() - std::chrono::hours(1));
        return fs::last_write_time(de);
    };
    EXPECT_FALSE(MarcaArchivo().vale(*archivos, ruta));
    // Just written, it may be written again without a change of its date.
    EXPECT_FALSE(MarcaArchivo(*archivos, ruta).vale(*archivos, ruta));
    const auto fecha = fechar(ruta);
    const MarcaArchivo marca(*archivos, ruta);
    EXPECT_TRUE(marca.vale(*archivos, ruta));
    carpeta.escribir("a", "dos");
    EXPECT_FALSE(marca.vale(*archivos, ruta));
    fs::last_write_time(ruta, fecha);
    EXPECT_TRUE(marca.vale(*archivos, ruta));

    // Another file under its name, of the same size and date.
    const std::string otra = carpeta.escribir("b", "uno");
    fs::last_write_time(otra, fecha);
    archivos->renombrar(otra, ruta);
    EXPECT_FALSE(marca.vale(*archivos, ruta));

    // That there is none is as good a thing to know.
    archivos->borrar(ruta);
    const MarcaArchivo ninguno(*archivos, ruta);
    EXPECT_TRUE(ninguno.vale(*archivos, ruta));
    carpeta.escribir("a", "");
    EXPECT_FALSE(ninguno.vale(*archivos, ruta));
}

}  // namespace tarvoline::pruebas
