#include "workflows/configuracion_empresa.h"

#include <gtest/gtest.h>

#include "apoyo/archivos_defectuosos.h"
#include "workflows/mundo_flujos.h"

namespace tarvoline::workflows {
namespace {

using pruebas::MundoFlujos;

TEST(ConfiguracionEmpresa, LaSesionVaPorDelanteDeLaEmpresa) {
    MundoFlujos mundo;
    const auto ruta = mundo.crearEmpresa("Uno.QZT", "empresa", "clave1");
    mundo.nucleo.ajustes.GrabarRegistro("ACTIVE", ruta);
    mundo.nucleo.entrarComo("maria", "secreta", "CUENTA1");
    auto& estado = mundo.nucleo.estado;
    estado.gUsuario = "otro";

    mundo.flujos.configuracion().CargarConfiguracionEmpresa("");
    EXPECT_EQ(estado.gUsuario, "maria");
    EXPECT_EQ(estado.gCuenta, "CUENTA1");

    // A session without account code leaves the code that was found.
    estado.gCuentaSesion = " ";
    estado.gCuenta = "HALLADA";
    mundo.flujos.configuracion().CargarConfiguracionEmpresa("");
    EXPECT_EQ(estado.gCuenta, "HALLADA");

    mundo.flujos.configuracion().CargarConfiguracionEmpresa(ruta);
    EXPECT_EQ(estado.gUsuario, "empresa");
    EXPECT_EQ(estado.gPassword, "clave1");
    EXPECT_EQ(estado.gCarpeta, "DATOS");
}

TEST(ConfiguracionEmpresa, SinEmpresaActivaAvisaUnaVez) {
    MundoFlujos mundo;
    mundo.flujos.configuracion().CargarConfiguracionEmpresa("");
    mundo.flujos.configuracion().CargarConfiguracionEmpresa("");
    ASSERT_EQ(mundo.nucleo.guion.cajas().size(), 1U);
    EXPECT_EQ(mundo.nucleo.guion.cajas().front().texto, "<1931>");
}

TEST(ConfiguracionEmpresa, CarpetasAdjuntasCuentanDesdeUno) {
    MundoFlujos mundo;
    const auto ruta = mundo.crearEmpresa("Uno.QZT", "empresa", "clave1");
    link::Enlace enlace(mundo.enlaces);
    enlace.AbrirEmpresa(ruta, "");
    enlace.Config("ADJUNTARCARPETAS0", "/a/b");
    enlace.Config("ADJUNTARCARPETAS1", "/c/d");
    enlace.Config("ADJUNTARCARPETAS3", "/nunca");  // behind a gap
    enlace.Config("TVCARPETA", "Contabilidad");
    enlace.CerrarEmpresa();

    mundo.flujos.configuracion().CargarConfiguracionEmpresa(ruta);
    EXPECT_EQ(mundo.nucleo.estado.gAdjuntarCarpetas, (std::vector<std::string>{"", "/a/b", "/c/d"}));
    EXPECT_EQ(mundo.nucleo.estado.gCarpeta, "Contabilidad");
}

TEST(ConfiguracionEmpresa, SinActivarNoTomaUsuarioNiCarpetasDeLaAnterior) {
    MundoFlujos mundo;
    const auto ruta = mundo.crearEmpresa("Uno.QZT");
    mundo.nucleo.estado.gAdjuntarCarpetas = {"", "/de/otra"};
    mundo.nucleo.estado.gUsuario = "sesion";
    mundo.flujos.configuracion().CargarConfiguracionEmpresa(ruta);
    EXPECT_TRUE(mundo.nucleo.estado.gAdjuntarCarpetas.empty());
    EXPECT_EQ(mundo.nucleo.estado.gUsuario, "sesion");
}

TEST(ConfiguracionEmpresa, ClavesRecordadasSePruebanEnOrden) {
    MundoFlujos mundo;
    auto& guion = mundo.nucleo.guion;
    const auto una = mundo.crearEmpresa("Una.QZT", "u1", "c1");
    const auto otra = mundo.crearEmpresa("Otra.QZT", "u2", "c2");
    mundo.proteger(una, "abcd");
    mundo.proteger(otra, "wxyz");

    guion.teclear("mala", "<310> Una.QZT");
    guion.teclear("abcd");
    mundo.flujos.configuracion().CargarConfiguracionEmpresa(una);
    EXPECT_EQ(mundo.nucleo.estado.gUsuario, "u1");
    EXPECT_EQ(guion.ultimo().titulo, "Empresa Veldorix");

    guion.teclear("wxyz");  // after both remembered ones were tried in silence
    mundo.flujos.configuracion().CargarConfiguracionEmpresa(otra);
    EXPECT_EQ(mundo.nucleo.estado.gUsuario, "u2");
    mundo.flujos.configuracion().CargarConfiguracionEmpresa(una);  // nothing is asked any more
    EXPECT_EQ(mundo.nucleo.estado.gUsuario, "u1");
}

TEST(ConfiguracionEmpresa, OnceClavesMalasDejanLaEmpresaSinConfigurar) {
    MundoFlujos mundo;
    const auto ruta = mundo.crearEmpresa("Una.QZT", "u1", "c1");
    mundo.proteger(ruta, "abcd");
    for (int i = 0; i < 11; ++i) {
        mundo.nucleo.guion.teclear("x" + std::to_string(i));
    }
    mundo.nucleo.estado.gUsuario = "antes";
    mundo.flujos.configuracion().CargarConfiguracionEmpresa(ruta);
    EXPECT_EQ(mundo.nucleo.estado.gUsuario, "");
    EXPECT_TRUE(mundo.flujos.configuracion().claveRechazada());
    EXPECT_EQ(mundo.nucleo.estado.gClavesEmpresa[10], "x10");
}

TEST(ConfiguracionEmpresa, CancelarLaClaveTerminaElProgramaSoloConAlguienDelante) {
    MundoFlujos mundo;
    const auto ruta = mundo.crearEmpresa("Una.QZT", "u1", "c1");
    mundo.proteger(ruta, "abcd");
    mundo.nucleo.guion.cancelarPeticion();
    EXPECT_THROW(mundo.flujos.configuracion().CargarConfiguracionEmpresa(ruta), core::FinDePrograma);

    mundo.nucleo.guion.persona = false;
    mundo.nucleo.guion.cancelarPeticion();
    mundo.flujos.configuracion().CargarConfiguracionEmpresa(ruta);
    EXPECT_TRUE(mundo.flujos.configuracion().claveRechazada());
}

TEST(ConfiguracionEmpresa, ArchivosCortosNoTiranElPrograma) {
    MundoFlujos mundo;
    for (const std::size_t longitud : {0U, 1U, 263U, 264U, 1024U, 1025U}) {
        std::string contenido(longitud, ' ');
        if (longitud > 82) {
            contenido.replace(0, 2, "07");
            contenido[81] = '1';  // active for this company
        }
        const auto ruta =
            mundo.nucleo.carpeta().escribir("datos/corta" + std::to_string(longitud) + ".QZT", contenido);
        mundo.nucleo.estado.gUsuario = "antes";
        EXPECT_NO_THROW(mundo.flujos.configuracion().CargarConfiguracionEmpresa(ruta)) << longitud;
    }
    EXPECT_NO_THROW(mundo.flujos.configuracion().CargarConfiguracionEmpresa(mundo.nucleo.datos("falta.QZT")));
    EXPECT_EQ(mundo.nucleo.estado.gUsuario, "");
}

TEST(ConfiguracionEmpresa, SinElProductoInstaladoLaEmpresaNoEstaConfigurada) {
    MundoFlujos mundo;
    const auto ruta = mundo.crearEmpresa("Uno.QZT", "empresa", "clave1");
    mundo.nucleo.ajustes.GrabarRegistro("DATOS_DIR", "");
    mundo.nucleo.estado.gUsuario = "antes";
    EXPECT_NO_THROW(mundo.flujos.configuracion().CargarConfiguracionEmpresa(ruta));
    EXPECT_EQ(mundo.nucleo.estado.gUsuario, "");
}

TEST(ConfiguracionEmpresa, UnaClaveRechazadaNoDiceNadaDeLaSiguiente) {
    MundoFlujos mundo;
    auto& nucleo = mundo.nucleo;
    const auto ruta = mundo.crearEmpresa("Una.QZT", "u1", "c1");
    mundo.proteger(ruta, "abcd");
    nucleo.guion.persona = false;
    nucleo.guion.cancelarPeticion();
    mundo.flujos.configuracion().CargarConfiguracionEmpresa(ruta);
    ASSERT_TRUE(mundo.flujos.configuracion().claveRechazada());
    nucleo.estado.gProducto = "VXCRM";
    mundo.flujos.configuracion().CargarConfiguracionEmpresa(nucleo.datos("TOTAL05.XML"));
    EXPECT_FALSE(mundo.flujos.configuracion().claveRechazada());
}

// Whichever read meets a lock of the accounting programs, it is made again.
TEST(ConfiguracionEmpresa, EsperaAQuienTieneElArchivo) {
    const auto propios = platform::crearSistemaArchivos();
    pruebas::ArchivosDefectuosos archivos(*propios);
    MundoFlujos mundo({.archivos = &archivos});
    const auto ruta = mundo.crearEmpresa("Uno.QZT", "empresa", "clave1");
    const auto cargar = [&] {
        mundo.nucleo.estado.gUsuario = "antes";
        mundo.flujos.configuracion().CargarConfiguracionEmpresa(ruta);
        return mundo.nucleo.estado.gUsuario;
    };
    archivos.olvidarCuentas();
    ASSERT_EQ(cargar(), "empresa");
    const int lecturas = archivos.cuenta(pruebas::Operacion::leer);
    ASSERT_GE(lecturas, 3);
    for (int vez = 1; vez <= lecturas; ++vez) {
        archivos.fallar({.operacion = pruebas::Operacion::leer,
                         .vez = vez,
                         .mascara = "Uno.QZT",
                         .numero = platform::error_archivo::permisoDenegado});
        EXPECT_EQ(cargar(), "empresa") << "read " << vez;
        archivos.sanar();
    }
}

TEST(ConfiguracionEmpresa, TextosSeBuscanPorComienzo) {
    const std::string cabeza(1024, ' ');
    struct Caso {
        std::string contenido, clave, valor;
    };
    const Caso casos[] = {
        {cabeza + "TVUSERNAME=x\r\nTVUSER=y\r\n\x1a", "TVUSER", "x"},
        {cabeza + "tvuser =  con blancos \r\n\x1a", "TVUSER", "con blancos"},
        {cabeza + "TVUSER=\r\n\x1a", "TVUSER", "defecto"},
        {cabeza + "TVUSER\r\n\x1a", "TVUSER", "defecto"},
        {cabeza + "OTRO=1\r\n\x1aTVUSER=tras el fin\r\n", "TVUSER", "defecto"},
        {cabeza, "TVUSER", "defecto"},
        {cabeza + "T", "TVUSER", "defecto"},
        {cabeza + "CARPETA=A\xf1o\r\n\x1a", "carpeta", "Año"},
    };
    for (const auto& caso : casos) {
        EXPECT_EQ(ConfiguracionEmpresa::LeerClaveFichero(caso.contenido, caso.clave, "defecto"), caso.valor);
    }
}

TEST(ConfiguracionEmpresa, VXCRMLeeSuXml) {
    MundoFlujos mundo;
    auto& nucleo = mundo.nucleo;
    nucleo.estado.gProducto = "VXCRM";
    const auto xml = [](const char* usuario) {
        return std::string(
                   "<?xml version=\"1.0\" encoding=\"utf-8\"?><r>"
                   "<a Key=\"TARVOLINEACTIVADO\" v=\"1\"/><a Key=\"TVUSER\" v=\"") +
               usuario + "\"/><a Key=\"ADJUNTARCARPETAS1\" v=\"/a/b\"/></r>";
    };
    nucleo.carpeta().escribir("datos/TOTAL03.XML", xml("tres"));
    nucleo.carpeta().escribir("datos/total04.xml", xml("cuatro"));
    nucleo.carpeta().escribir("datos/TOTAL05.XML", "<r><a Key=\"TARVOLINEACTIVADO\" v=\"0\"/></r>");
    nucleo.ajustes.GrabarRegistro("comun", "3", "", "VXCRM");

    // The company that was chosen, not the active one.
    mundo.flujos.configuracion().CargarConfiguracionEmpresa(nucleo.datos("TOTAL04.XML"));
    EXPECT_EQ(nucleo.estado.gEmpresaCRM, "04");
    EXPECT_EQ(nucleo.estado.gUsuario, "cuatro");
    EXPECT_EQ(nucleo.estado.gCarpeta, "DATOS");
    EXPECT_EQ(nucleo.estado.gAdjuntarCarpetas, (std::vector<std::string>{"", "", "/a/b"}));
    EXPECT_EQ(nucleo.vista.textoCarpetas, "DATOS");
    EXPECT_FALSE(nucleo.estado.gInicio);

    nucleo.estado.gUsuarioSesion.clear();
    mundo.flujos.configuracion().CargarConfiguracionEmpresa("");
    EXPECT_EQ(nucleo.estado.gUsuario, "tres");
    mundo.flujos.configuracion().CargarConfiguracionEmpresa(nucleo.datos("TOTAL05.XML"));
    EXPECT_EQ(nucleo.estado.gUsuario, "");
    EXPECT_EQ(nucleo.estado.gCarpeta, "");

    // None is active: none is configured, without a word.
    nucleo.ajustes.GrabarRegistro("comun", "", "", "VXCRM");
    nucleo.estado.gUsuario = "antes";
    mundo.flujos.configuracion().CargarConfiguracionEmpresa("");
    EXPECT_EQ(nucleo.estado.gUsuario, "");
    EXPECT_TRUE(nucleo.guion.cajas().empty());
}

}  // namespace
}  // namespace tarvoline::workflows
