// Folders of the system, the clock, the locale.
#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <ctime>

#include "apoyo/carpeta_prueba.h"
#include "apoyo/variables_proceso.h"
#include "platform/carpetas_sistema.h"
#include "platform/reloj.h"

namespace tarvoline::pruebas {

using namespace platform;

TEST(Carpetas, ValenLasVariablesAbsolutas) {
    VariablesProceso entorno;
    entorno.poner("HOME", "/casa/ana/");
    for (const char* nombre : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "TMPDIR"})
        entorno.quitar(nombre);
    EXPECT_EQ(carpetaConfiguracion(), "/casa/ana/.config");
    EXPECT_EQ(carpetaDatosUsuario(), "/casa/ana/.local/share");
    EXPECT_EQ(carpetaEstado(), "/casa/ana/.local/state");
    EXPECT_EQ(carpetaTemporal(), "/casa/ana/.local/state");
    EXPECT_EQ(carpetaInicioSesion(), "/casa/ana/.config/autostart");
    entorno.poner("XDG_CONFIG_HOME", "/otra//");
    entorno.poner("XDG_DATA_HOME", "relativa");
    entorno.poner("XDG_STATE_HOME", "");
    entorno.poner("TMPDIR", "/tmp/x");
    EXPECT_EQ(carpetaConfiguracion(), "/otra");
    EXPECT_EQ(carpetaDatosUsuario(), "/casa/ana/.local/share");
    EXPECT_EQ(carpetaEstado(), "/casa/ana/.local/state");
    EXPECT_EQ(carpetaTemporal(), "/tmp/x");
}

TEST(Carpetas, SinHomeValeLaDelSistema) {
    VariablesProceso entorno;
    entorno.quitar("XDG_CONFIG_HOME");
    const passwd* usuario = ::getpwuid(::getuid());
    ASSERT_NE(usuario, nullptr);
    for (const bool relativa : {false, true}) {
        entorno.quitar("HOME");
        if (relativa) entorno.poner("HOME", "aqui");
        EXPECT_EQ(carpetaConfiguracion(), std::string(usuario->pw_dir) + "/.config");
    }
}

TEST(Carpetas, LosDocumentosLosNombraElEscritorio) {
    const CarpetaPrueba carpeta;
    VariablesProceso entorno;
    entorno.poner("HOME", "/casa/ana");
    entorno.poner("XDG_CONFIG_HOME", carpeta.ruta());
    EXPECT_EQ(carpetaPersonal(), "/casa/ana");
    const std::pair<const char*, const char*> casos[] = {
        {"XDG_DOCUMENTS_DIR=\"$HOME/Mis \\\"cosas\\\"/\"\n", "/casa/ana/Mis \"cosas\""},
        {"XDG_DOCUMENTS_DIR=\"/datos\"\n", "/datos"},
        {"XDG_DOCUMENTS_DIR=\"$HOMEX/a\"\n", "/casa/ana"},
        {"XDG_DOCUMENTS_DIR=\"relativa\"\n", "/casa/ana"},
        {"# XDG_DOCUMENTS_DIR=\"/x\"\n", "/casa/ana"}};
    for (const auto& [texto, esperada] : casos) {
        carpeta.escribir("user-dirs.dirs", texto);
        EXPECT_EQ(carpetaPersonal(), esperada) << texto;
    }
}

TEST(Carpetas, ElEjecutableEsEste) {
    EXPECT_TRUE(ejecutablePropio().ends_with("/prueba_platform"));
    EXPECT_EQ(carpetaEjecutable() + "/prueba_platform", ejecutablePropio());
}

TEST(Reloj, DaLaHoraDeLaZona) {
    const auto instante = std::chrono::system_clock::from_time_t(1'719'874'799);  // 2024-07-01 22:59:59 UTC
    {
        VariablesProceso entorno;
        entorno.poner("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
        ::tzset();
        const FechaHora local = aLocal(instante);
        EXPECT_EQ(local.dia, 2);
        EXPECT_EQ(local.hora, 0);
        EXPECT_EQ(local.segundo, 59);
        // Fractions before 1970 belong to the second that has begun.
        EXPECT_EQ(aLocal(std::chrono::system_clock::time_point(std::chrono::milliseconds(-1))).segundo, 59);
    }
    ::tzset();
    const auto reloj = crearReloj();
    EXPECT_LE(std::chrono::abs(reloj->ahora() - std::chrono::system_clock::now()), std::chrono::minutes(1));
}

TEST(Reloj, LaMonedaSinPaisNoTieneDecimales) {
    VariablesProceso entorno;
    for (const char* zona : {"C", "no_EXISTE.UTF-8"}) {
        entorno.poner("LC_ALL", zona);
        EXPECT_EQ(digitosMonedaLocal(), std::nullopt) << zona;
    }
}

}  // namespace tarvoline::pruebas
