#include <gtest/gtest.h>

#include "apoyo/nucleo_prueba.h"

namespace tarvoline::core {
namespace {

using pruebas::AjustesMemoria;
using pruebas::NucleoPrueba;

struct PruebaAjustes : testing::Test {
    AjustesMemoria arbol;
    AjustesMemoria maquina;
    Ajustes ajustes{arbol, &maquina};
};

TEST_F(PruebaAjustes, UnBlancoNoEsValor) {
    ajustes.GrabarRegistro("Visualiza datos en", "", "BACKUP");
    EXPECT_EQ(arbol.leer({"Veldorix", "BACKUP", "Visualiza datos en"}), " ") << "what other programs expect";
    EXPECT_EQ(ajustes.leer("Visualiza datos en", "BACKUP", "2"), "2");
    arbol.grabar({"Veldorix", "BACKUP", "Visualiza datos en"}, "");
    EXPECT_EQ(ajustes.leer("Visualiza datos en", "BACKUP", "2"), "2") << "a value emptied by hand";
    ajustes.GrabarRegistro("Visualiza datos en", "  ", "BACKUP");
    EXPECT_EQ(ajustes.leer("Visualiza datos en", "BACKUP", "2"), "  ") << "two blanks are a value";
}

TEST_F(PruebaAjustes, LasPalabrasLogicas) {
    struct {
        const char* valor;
        bool logico;
        int numero;
    } const casos[] = {{"Verdadero", true, -1},
                       {"Falso", true, 0},
                       {"verdadero", false, 0},  // the words count in their spelling only
                       {"12 Rue", false, 12}};
    for (const auto& caso : casos) {
        ajustes.GrabarRegistro("a", caso.valor);
        const auto leido = ajustes.LeerRegistro("a");
        EXPECT_EQ(leido.esLogico(), caso.logico) << caso.valor;
        EXPECT_EQ(leido.numero(), caso.numero) << caso.valor;
        EXPECT_EQ(leido.texto(), caso.valor);
    }
    EXPECT_FALSE(ajustes.LeerRegistro("falta", "", "Verdadero").esLogico())
        << "a default is taken as it stands";
}

TEST_F(PruebaAjustes, SinProductoYVeldorixSonUnArbol) {
    ajustes.GrabarRegistro("Active", "/datos/uno.zip", "NETBACKUP", "VELDORIX");
    EXPECT_EQ(ajustes.leer("ACTIVE", "netbackup"), "/datos/uno.zip");
    EXPECT_EQ(ajustes.leer("Active", "NETBACKUP", "", "VXCRM"), "");
    ajustes.GrabarRegistro("Directory", "/opt/x");
    EXPECT_EQ(ajustes.leer("directory", "Settings", "", "veldorix"), "/opt/x");
    EXPECT_EQ(ajustes.leerCarpeta("Directory"), "/opt/x/");
    EXPECT_EQ(ajustes.leerCarpeta("falta"), "") << "no separator without a folder";
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

TEST(Almacen, LoQueNoSePuedeGrabarSeDiceYSeSigue) {
    NucleoPrueba nucleo;
    nucleo.memoria.fallarAlGrabar = true;
    nucleo.almacen.Grabar("Offset", "1", "NETBACKUP");
    ASSERT_EQ(nucleo.guion.cajas().size(), 1U);
    EXPECT_EQ(nucleo.guion.ultimo().texto, "Unable to Create/Open SubKey.\rVeldorix will now abort.");
    nucleo.memoria.fallarAlGrabar = false;
    nucleo.almacen.Grabar("Offset", "2", "NETBACKUP");
    EXPECT_EQ(nucleo.almacen.Leer("Offset", "NETBACKUP"), "2");
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

}  // namespace
}  // namespace tarvoline::core
