#include <gtest/gtest.h>

#include <filesystem>

#include "apoyo/nucleo_prueba.h"
#include "platform/carpetas_sistema.h"

namespace tarvoline::core {
namespace {

namespace fs = std::filesystem;
using pruebas::NucleoPrueba;

TEST(Rutas, SeSeparanPorLasDosBarras) {
    struct {
        const char* ruta;
        PartesRuta partes;
    } const casos[] = {
        {"/datos/Año.uno.qzt", {"/datos/", "Año.uno", "qzt"}},
        {"C:\\datos\\PLAN.QZD", {"C:\\datos\\", "PLAN", "QZD"}},
        {"C:\\a.b/c", {"C:\\a.b/", "c", ""}},
        {"sin.", {"", "sin", ""}},
        {".oculto", {"", "", "oculto"}},
        {"/datos/", {"/datos/", "", ""}},
        {"", {"", "", ""}},
    };
    for (const auto& [ruta, partes] : casos) {
        const PartesRuta separada = SepararRuta(ruta);
        EXPECT_EQ(separada.directorio, partes.directorio) << ruta;
        EXPECT_EQ(separada.nombre, partes.nombre) << ruta;
        EXPECT_EQ(separada.extension, partes.extension) << ruta;
    }
    EXPECT_EQ(SoloNombre("C:\\datos/PLAN.QZD"), "PLAN.QZD");
    EXPECT_EQ(SoloNombre("/datos/"), "");
}

TEST(Rutas, LasQueNoVienenDeLaRaizSonDeLaCarpetaActual) {
    const std::string aqui = fs::current_path().string();
    EXPECT_EQ(rutaCompleta(".\\Uno.QZT"), aqui + "/.\\Uno.QZT");
    EXPECT_EQ(rutaCompleta(""), aqui);
    for (const char* completa : {"/datos/Uno.QZT", "\\datos\\Uno.QZT", "C:\\datos\\Uno.QZT"}) {
        EXPECT_EQ(rutaCompleta(completa), completa);
    }
}

TEST(Carpetas, TemporalSoloLaVeSuDuenioYJuntaConUnaSolaBarra) {
    NucleoPrueba nucleo;
    const std::string raiz = nucleo.ruta("temporal/Veldorix");
    EXPECT_EQ(nucleo.carpetas.CarpetaTemporal(), raiz);
    EXPECT_EQ(nucleo.carpetas.CarpetaTemporal("uno.zip"), raiz + "/uno.zip");
    EXPECT_EQ(nucleo.carpetas.CarpetaTemporal("/uno.zip"), raiz + "/uno.zip");
    EXPECT_EQ(nucleo.carpetas.CarpetaTemporal("\\Tarvoline\\"), raiz + "\\Tarvoline\\");
    EXPECT_EQ(nucleo.carpetas.carpetaTransferencia(), raiz + "/Tarvoline/");
    for (const std::string& carpeta : {raiz, raiz + "/Tarvoline/"}) {
        ASSERT_TRUE(fs::is_directory(carpeta)) << carpeta;
        EXPECT_EQ(fs::status(carpeta).permissions(), fs::perms::owner_all) << carpeta;
    }
}

TEST(Carpetas, UnaRaizImposibleNoDetieneANadie) {
    NucleoPrueba nucleo;
    const Carpetas carpetas(nucleo.archivos, nucleo.ajustes, nucleo.carpeta().escribir("archivo", "x"));
    EXPECT_EQ(carpetas.CarpetaTemporal("a"), nucleo.ruta("archivo/Veldorix/a"));
    EXPECT_NO_THROW(carpetas.CrearDirectorios(nucleo.ruta("archivo/b")));
}

TEST(Carpetas, DelPrograma) {
    NucleoPrueba nucleo;
    EXPECT_EQ(nucleo.carpetas.DirectorioPrograma(), nucleo.ruta("programa/share/tarvoline/"));
    fs::remove_all(nucleo.ruta("programa/share"));
    EXPECT_EQ(nucleo.carpetas.DirectorioPrograma(), nucleo.ruta("programa/bin/"));
    EXPECT_EQ(nucleo.carpetas.rutaPrograma(), platform::ejecutablePropio());
    const auto vecino = nucleo.carpeta().escribir("programa/bin/tarvoline", "x");
    EXPECT_EQ(nucleo.carpetas.rutaPrograma(), vecino);
    const auto instalado = nucleo.carpeta().escribir("instalado/tarvoline", "x");
    nucleo.ajustes.GrabarRegistro("Directory", nucleo.ruta("instalado"));
    EXPECT_EQ(nucleo.carpetas.rutaPrograma(), instalado);
    EXPECT_EQ(nucleo.carpetas.DirectorioPrograma(), nucleo.ruta("instalado/"));
}

TEST(Carpetas, DelUsuarioYComun) {
    NucleoPrueba nucleo;
    using enum CarpetaConocida;
    const std::string datosUsuario = nucleo.ruta("casa/XDG_DATA_HOME");
    const std::string propia = datosUsuario + "/QZ/Veldorix/5";
    EXPECT_EQ(nucleo.carpetas.CarpetaUsuario("a.txt"), propia + "/a.txt");
    EXPECT_TRUE(fs::is_directory(propia));
    EXPECT_EQ(nucleo.carpetas.CarpetaEspecial(datosLocales, datosItinerantes), datosUsuario);
    if (fs::exists("/var/lib/tarvoline")) {
        GTEST_SKIP() << "this machine has a folder that all users share";
    }
    EXPECT_EQ(nucleo.carpetas.CarpetaComun("a.txt"), nucleo.ruta("casa/XDG_CONFIG_HOME/QZ/Veldorix/5/a.txt"));
    EXPECT_FALSE(fs::exists("/var/lib/tarvoline")) << "only the administrator makes it";
    EXPECT_EQ(nucleo.carpetas.CarpetaEspecial(datosComunes, datosLocales), datosUsuario);
    EXPECT_EQ(nucleo.carpetas.CarpetaEspecial(datosComunes, datosComunes), "");
}

TEST(Carpetas, LosNombresNoDistinguenCaja) {
    NucleoPrueba nucleo;
    nucleo.carpetas.CrearDirectorios(nucleo.ruta("a\\b/c") + "\\");
    EXPECT_TRUE(fs::is_directory(nucleo.ruta("a/b/c")));
    nucleo.carpetas.CrearDirectorios(nucleo.ruta("A/B/c"));
    EXPECT_FALSE(fs::exists(nucleo.ruta("A"))) << "a folder of that name was there already";
    nucleo.carpeta().escribir("datos/Plan.qzd", "x");
    EXPECT_TRUE(nucleo.carpetas.ArchivoExiste(nucleo.ruta("DATOS\\PLAN.QZD")));
    for (const auto& falta : {nucleo.ruta("datos"), nucleo.ruta("datos/otro.qzd"), std::string()}) {
        EXPECT_FALSE(nucleo.carpetas.ArchivoExiste(falta)) << falta;
    }
}

TEST(Carpetas, DirectorioDeDatosDelProducto) {
    NucleoPrueba nucleo;
    const fs::path antes = fs::current_path();
    fs::create_directories(nucleo.ruta("Crm"));
    nucleo.ajustes.GrabarRegistro("DATOS_DIR", nucleo.ruta("crm"), "", "VXCRM");
    nucleo.ajustes.GrabarRegistro("Directory", nucleo.ruta("programa"));
    nucleo.carpetas.PonerDirectorioDatos("VXCRM");
    EXPECT_EQ(fs::current_path(), fs::canonical(nucleo.ruta("Crm")));
    nucleo.carpetas.PonerDirectorioDatos("VELDORIX");
    EXPECT_EQ(fs::current_path(), fs::canonical(nucleo.ruta("programa")));
    nucleo.ajustes.GrabarRegistro("Directory", nucleo.ruta("falta"));
    EXPECT_NO_THROW(nucleo.carpetas.PonerDirectorioDatos("VELDORIX"));
    fs::current_path(antes);
}

}  // namespace
}  // namespace tarvoline::core
