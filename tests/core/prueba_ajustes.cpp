#include <gtest/gtest.h>

#include "apoyo/nucleo_prueba.h"

namespace tarvoline::core {
namespace {

using pruebas::AjustesMemoria;
using pruebas::NucleoPrueba;
using pruebas::OpcionesNucleo;

struct PruebaAjustes : testing::Test {
    AjustesMemoria arbol;
    AjustesMemoria maquina;
    Ajustes ajustes{arbol, &maquina};
};

TEST_F(PruebaAjustes, UnBlancoNoEsValor) {
    ajustes.GrabarRegistro("Visualiza datos en", "", "BACKUP");
    EXPECT_EQ(arbol.leer({"Veldorix", "BACKUP", "Visualiza datos en"}), " ") << "what other programs expect";
    EXPECT_EQ(ajustes.leer("Visualiza datos en", "BACKUP", "2"), "2");
    EXPECT_EQ(ajustes.leer("Visualiza datos en", "BACKUP"), "");
    arbol.grabar({"Veldorix", "BACKUP", "Visualiza datos en"}, "");
    EXPECT_EQ(ajustes.leer("Visualiza datos en", "BACKUP", "2"), "2") << "a value emptied by hand";
    ajustes.GrabarRegistro("Visualiza datos en", "  ", "BACKUP");
    EXPECT_EQ(ajustes.leer("Visualiza datos en", "BACKUP", "2"), "  ") << "two blanks are a value";
}

TEST_F(PruebaAjustes, LasPalabrasLogicas) {
    ajustes.GrabarRegistro("a", "Verdadero");
    ajustes.GrabarRegistro("b", "Falso");
    ajustes.GrabarRegistro("c", "verdadero");
    ajustes.GrabarRegistro("d", "12 Rue");
    EXPECT_TRUE(ajustes.LeerRegistro("a").esLogico());
    EXPECT_EQ(ajustes.LeerRegistro("a").numero(), -1);
    EXPECT_EQ(ajustes.LeerRegistro("b").numero(), 0);
    EXPECT_EQ(ajustes.LeerRegistro("a").texto(), "Verdadero");
    EXPECT_EQ(ajustes.LeerRegistro("b").texto(), "Falso");
    EXPECT_FALSE(ajustes.LeerRegistro("c").esLogico()) << "the words count in this spelling only";
    EXPECT_EQ(ajustes.LeerRegistro("d").numero(), 12);
    EXPECT_FALSE(ajustes.LeerRegistro("falta", "", "Verdadero").esLogico())
        << "a default is taken as it stands";
}

TEST_F(PruebaAjustes, SinProductoYVeldorixSonUnArbol) {
    ajustes.GrabarRegistro("Active", "/datos/uno.zip", "NETBACKUP", "VELDORIX");
    EXPECT_EQ(ajustes.leer("ACTIVE", "netbackup"), "/datos/uno.zip");
    EXPECT_EQ(ajustes.leer("Active", "NETBACKUP", "", "VXCRM"), "");
    ajustes.GrabarRegistro("Directory", "/opt/x");
    EXPECT_EQ(ajustes.leer("directory", "Settings", "", "veldorix"), "/opt/x");
    EXPECT_EQ(arbol.listar().size(), 2U);
}

TEST_F(PruebaAjustes, LaMaquinaSoloSuplaLoQueFaltaYSoloSiSePide) {
    maquina.grabar({"Veldorix", "Settings", "DATOS_DIR"}, "/comun");
    EXPECT_EQ(ajustes.leer("DATOS_DIR"), "");
    ajustes.usarMaquina(true);
    EXPECT_EQ(ajustes.leer("DATOS_DIR"), "/comun");
    ajustes.GrabarRegistro("DATOS_DIR", "/propio");
    EXPECT_EQ(ajustes.leer("DATOS_DIR"), "/propio");
    ajustes.GrabarRegistro("DATOS_DIR", "");
    EXPECT_EQ(ajustes.leer("DATOS_DIR"), "") << "emptied by the user, not missing";
}

TEST_F(PruebaAjustes, UnaCarpetaAcabaEnSeparador) {
    ajustes.GrabarRegistro("a", "/datos");
    ajustes.GrabarRegistro("b", "C:\\datos\\");
    EXPECT_EQ(ajustes.leerCarpeta("a"), "/datos/");
    EXPECT_EQ(ajustes.leerCarpeta("b"), "C:\\datos\\");
    EXPECT_EQ(ajustes.leerCarpeta("c"), "");
}

TEST(Almacen, LoQueNoSePuedeGrabarSeDiceYSeSigue) {
    NucleoPrueba nucleo;
    nucleo.memoria.fallarAlGrabar = true;
    nucleo.almacen.Grabar("Offset", "1", "NETBACKUP");
    ASSERT_EQ(nucleo.guion.cajas().size(), 1U);
    EXPECT_EQ(nucleo.guion.ultimo().texto, "Unable to Create/Open SubKey.\rVeldorix will now abort.");
    nucleo.memoria.fallarAlGrabar = false;
    nucleo.almacen.Grabar("Offset", "2", "NETBACKUP");
    EXPECT_EQ(nucleo.almacen.Leer("Offset", "NETBACKUP"), "2");
    EXPECT_EQ(nucleo.guion.cajas().size(), 1U);
}

TEST(Almacen, CancelarNoEsUnaRespuestaVacia) {
    NucleoPrueba nucleo;
    nucleo.guion.cancelarPeticion();
    nucleo.guion.teclear("");
    nucleo.guion.cancelarCarpeta();
    EXPECT_EQ(nucleo.almacen.Pedir("Clave"), std::nullopt);
    EXPECT_EQ(nucleo.almacen.Pedir("Clave"), "");
    EXPECT_EQ(nucleo.almacen.ElegirCarpeta("Destino"), "");
}

TEST(Almacen, OtroProcesoVeLoGrabado) {
    OpcionesNucleo opciones;
    opciones.ajustesEnArchivo = true;
    NucleoPrueba nucleo(opciones);
    nucleo.almacen.Grabar("EMP1", "\"/datos/Año.qzt\"", "NETBACKUP", "VELDORIX");
    const auto otro = platform::crearArbolAjustes(nucleo.archivos, nucleo.rutaAjustes());
    Ajustes ajenos(*otro);
    EXPECT_EQ(ajenos.leer("emp1", "netbackup"), "\"/datos/Año.qzt\"");
    ajenos.GrabarRegistro("EMP1", "", "NETBACKUP");
    EXPECT_EQ(nucleo.almacen.Leer("EMP1", "NETBACKUP", "nada"), "nada");
}

}  // namespace
}  // namespace tarvoline::core
