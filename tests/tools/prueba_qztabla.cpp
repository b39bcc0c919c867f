// qztabla as a person runs it.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>

#include "apoyo/carpeta_prueba.h"

namespace tarvoline::pruebas {
namespace {

struct Qztabla : testing::Test {
    CarpetaPrueba carpeta;

    // Arguments as a shell reads them, from inside the folder.
    int correr(const std::string& argumentos) const {
        const auto orden = "cd '" + carpeta.ruta() + "' && " + TARVOLINE_BIN + "/qztabla " + argumentos +
                           " > salida.txt 2>&1";
        const int estado = std::system(orden.c_str());
        return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
    }
    std::string salida() const { return carpeta.leer("salida.txt"); }
};

TEST_F(Qztabla, Definir) {
    carpeta.escribir("fuentes/base.tabla", "titulo BASE\ncampo 1 texto 10 CUENTA\nclave 1 1(1,10)\n");
    carpeta.escribir("fuentes/otra.tabla", "titulo OTRA\ncampos de base.tabla\nclave 1 1(3,2)\n");
    ASSERT_EQ(correr("definir fuentes/otra.tabla OTRA.QZA"), 0) << salida();
    EXPECT_EQ(carpeta.leer("OTRA.QZA"),
              "01      OTRA                     "
              "00001000CUENTA                 01"
              "I1010302                         ");
    EXPECT_EQ(salida(), "");
}

TEST_F(Qztabla, DefinirDiceDondeEstaElError) {
    carpeta.escribir("mala.tabla", "titulo MALA\ncampo 1 texto CUENTA\n");
    carpeta.escribir("MALA.QZA", "as it was");
    EXPECT_EQ(correr("definir mala.tabla MALA.QZA"), 1);
    EXPECT_NE(salida().find("mala.tabla:2: the width must be a number"), std::string::npos) << salida();
    EXPECT_EQ(carpeta.leer("MALA.QZA"), "as it was");
    EXPECT_EQ(correr("definir falta.tabla MALA.QZA"), 1);
    EXPECT_EQ(correr("definir mala.tabla"), 2);
    EXPECT_EQ(correr(""), 2);
    EXPECT_EQ(correr("--help"), 0);
    EXPECT_NE(salida().find("definir"), std::string::npos);
}

}  // namespace
}  // namespace tarvoline::pruebas
