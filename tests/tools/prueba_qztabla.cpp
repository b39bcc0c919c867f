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

TEST_F(Qztabla, Plan) {
    carpeta.escribir("comun.plan", "5 Cuentas financieras\n57 Tesorería\n");
    carpeta.escribir("mio.plan", "cuentas de comun.plan\n570 Caja\n");
    carpeta.escribir("PLANC07.QZC", "older keys");
    carpeta.escribir("PLANC07.nuevo.QZD", "of a run that was cut short");
    ASSERT_EQ(correr("plan mio.plan PLANC07.QZD"), 0) << salida();
    EXPECT_EQ(salida(), "");
    const auto datos = carpeta.leer("PLANC07.QZD");
    constexpr std::size_t registro = 564;
    ASSERT_EQ(datos.size(), 3 * registro);
    EXPECT_EQ(datos.substr(registro, 51),
              "57        Tesorer\xed"
              "a                               2");
    EXPECT_EQ(carpeta.leer("PLANC07.QZC").substr(0, 8), "QZCLAVES");
    EXPECT_FALSE(carpeta.hay("PLANC07.nuevo.QZD"));
    EXPECT_FALSE(carpeta.hay("PLANC07.nuevo.QZC"));
}

TEST_F(Qztabla, UnPlanMaloDejaElQueHabia) {
    carpeta.escribir("malo.plan", "5 Cuentas financieras\n570 Caja\n");
    carpeta.escribir("PLANC07.QZD", "as it was");
    EXPECT_EQ(correr("plan malo.plan PLANC07.QZD"), 1);
    EXPECT_NE(salida().find("malo.plan:2: 570 lacks its parent 57"), std::string::npos) << salida();
    EXPECT_EQ(carpeta.leer("PLANC07.QZD"), "as it was");
    for (const auto* destino : {"PLANC07.QZC", "PLAN.QZD", "EXTRA07.QZD", "PLANC007.QZD"}) {
        EXPECT_EQ(correr(std::string("plan malo.plan ") + destino), 1) << destino;
        EXPECT_NE(salida().find("a plan is named PLANCnn.QZD"), std::string::npos) << salida();
    }
}

}  // namespace
}  // namespace tarvoline::pruebas
