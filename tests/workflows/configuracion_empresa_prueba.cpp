#include "workflows/configuracion_empresa.h"

#include <gtest/gtest.h>

#include "apoyo/archivos_defectuosos.h"
#include "workflows/mundo_flujos.h"

namespace tarvoline::workflows {
namespace {

class PruebaConfiguracion : public ::testing::Test {
  protected:
    // Reads the configuration of a company; the user in force after it.
    std::string cargar(const std::string& ruta) {
        estado.gUsuario = "antes";
        configuracion.CargarConfiguracionEmpresa(ruta);
        return estado.gUsuario;
    }

    pruebas::MundoFlujos mundo;
    pruebas::NucleoPrueba& nucleo = mundo.nucleo;
    core::Estado& estado = nucleo.estado;
    ConfiguracionEmpresa& configuracion = mundo.flujos.configuracion();
};

TEST_F(PruebaConfiguracion, LaEmpresaElegidaOLaSesion) {
    cargar("");
    cargar("");
    ASSERT_EQ(nucleo.guion.cajas().size(), 1U) << "no active company: told once";
    EXPECT_EQ(nucleo.guion.ultimo().texto, "<1931>");

    const auto ruta = mundo.crearEmpresa("Uno.QZT", "empresa", "clave1");
    nucleo.ajustes.GrabarRegistro("ACTIVE", ruta);
    nucleo.entrarComo("maria", "secreta", "CUENTA1");
    EXPECT_EQ(cargar(""), "maria");
    // A session without account code leaves the code that was found.
    estado.gCuentaSesion = " ";
    estado.gCuenta = "HALLADA";
    cargar("");
    EXPECT_EQ(estado.gCuenta, "HALLADA");

    link::Enlace enlace(mundo.enlaces);
    enlace.AbrirEmpresa(ruta, "");
    enlace.Config("ADJUNTARCARPETAS0", "/a/b");
    enlace.Config("ADJUNTARCARPETAS1", "/c/d");
    enlace.Config("ADJUNTARCARPETAS3", "/nunca");  // behind a gap
    enlace.CerrarEmpresa();
    EXPECT_EQ(cargar(ruta) + "/" + estado.gPassword + "/" + estado.gCarpeta, "empresa/clave1/DATOS");
    EXPECT_EQ(estado.gAdjuntarCarpetas, (std::vector<std::string>{"", "/a/b", "/c/d"}));
    // One that is not activated takes nothing over from the one before.
    EXPECT_EQ(cargar(mundo.crearEmpresa("Dos.QZT")), "antes");
    EXPECT_TRUE(estado.gAdjuntarCarpetas.empty());
}

TEST_F(PruebaConfiguracion, SinElProductoInstaladoNingunaEstaConfigurada) {
    const auto ruta = mundo.crearEmpresa("Uno.QZT", "empresa", "clave1");
    nucleo.ajustes.GrabarRegistro("DATOS_DIR", "");
    EXPECT_EQ(cargar(ruta), "");
}

TEST_F(PruebaConfiguracion, ClavesRecordadasSePruebanEnOrden) {
    auto& guion = nucleo.guion;
    const auto una = mundo.crearEmpresa("Una.QZT", "u1", "c1");
    const auto otra = mundo.crearEmpresa("Otra.QZT", "u2", "c2");
    mundo.proteger(una, "abcd");
    mundo.proteger(otra, "wxyz");
    guion.teclear("mala", "<310> Una.QZT");
    guion.teclear("abcd");
    EXPECT_EQ(cargar(una), "u1");
    EXPECT_EQ(guion.ultimo().titulo, "Empresa Veldorix");
    guion.teclear("wxyz");  // after both remembered ones were tried in silence
    EXPECT_EQ(cargar(otra), "u2");
    EXPECT_EQ(cargar(una), "u1") << "nothing is asked any more";

    mundo.proteger(una, "otra");
    for (int i = 3; i < 11; ++i) {
        guion.teclear("x" + std::to_string(i));
    }
    EXPECT_EQ(cargar(una), "");
    EXPECT_TRUE(configuracion.claveRechazada());
    EXPECT_EQ(estado.gClavesEmpresa[10], "x10");
}

TEST_F(PruebaConfiguracion, CancelarLaClaveTerminaElProgramaSoloConAlguienDelante) {
    const auto ruta = mundo.crearEmpresa("Una.QZT", "u1", "c1");
    mundo.proteger(ruta, "abcd");
    nucleo.guion.cancelarPeticion();
    EXPECT_THROW(cargar(ruta), core::FinDePrograma);
    nucleo.guion.persona = false;
    nucleo.guion.cancelarPeticion();
    EXPECT_EQ(cargar(ruta), "");
    EXPECT_TRUE(configuracion.claveRechazada());
    // A refused password says nothing of the next company.
    estado.gProducto = "VXCRM";
    cargar(nucleo.datos("TOTAL05.XML"));
    EXPECT_FALSE(configuracion.claveRechazada());
}

TEST_F(PruebaConfiguracion, ArchivosCortosNoTiranElPrograma) {
    for (const std::size_t longitud : {0U, 1U, 263U, 264U, 1024U, 1025U}) {
        std::string contenido(longitud, ' ');
        if (longitud > 82) {
            contenido.replace(0, 2, "07");
            contenido[81] = '1';  // active for this company
        }
        const auto ruta =
            nucleo.carpeta().escribir("datos/corta" + std::to_string(longitud) + ".QZT", contenido);
        EXPECT_NO_THROW(cargar(ruta)) << longitud;
    }
    EXPECT_EQ(cargar(nucleo.datos("falta.QZT")), "");
}

// Whichever read meets a lock of the accounting programs, it is made again.
TEST(ConfiguracionEmpresa, EsperaAQuienTieneElArchivo) {
    const auto propios = platform::crearSistemaArchivos();
    pruebas::ArchivosDefectuosos archivos(*propios);
    pruebas::MundoFlujos mundo({.archivos = &archivos});
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

TEST_F(PruebaConfiguracion, VXCRMLeeSuXml) {
    estado.gProducto = "VXCRM";
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

    EXPECT_EQ(cargar(nucleo.datos("TOTAL04.XML")), "cuatro") << "the one chosen, not the active one";
    EXPECT_EQ(estado.gEmpresaCRM + estado.gCarpeta + nucleo.vista.textoCarpetas, "04DATOSDATOS");
    EXPECT_EQ(estado.gAdjuntarCarpetas, (std::vector<std::string>{"", "", "/a/b"}));
    EXPECT_FALSE(estado.gInicio);
    EXPECT_EQ(cargar(""), "tres");
    EXPECT_EQ(cargar(nucleo.datos("TOTAL05.XML")) + estado.gCarpeta, "");
    // None is active: none is configured, without a word.
    nucleo.ajustes.GrabarRegistro("comun", "", "", "VXCRM");
    EXPECT_EQ(cargar(""), "");
    EXPECT_TRUE(nucleo.guion.cajas().empty());
}

}  // namespace
}  // namespace tarvoline::workflows
