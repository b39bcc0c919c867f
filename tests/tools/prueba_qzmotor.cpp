// qzmotor as a person or a script runs it: a command a line, an answer line each.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>

#include "apoyo/carpeta_prueba.h"

namespace tarvoline::pruebas {
namespace {

struct Qzmotor : testing::Test {
    CarpetaPrueba carpeta;

    int correr(const std::string& ordenes, const std::string& argumentos = {}) const {
        carpeta.escribir("ordenes.txt", ordenes);
        return bash("'" + std::string(TARVOLINE_BIN) + "/qzmotor' " + argumentos + " < ordenes.txt");
    }
    int bash(const std::string& guion) const {
        carpeta.escribir("guion.sh", guion);
        const auto orden =
            "cd '" + carpeta.ruta() + "' && timeout 60 bash guion.sh > salida.txt 2> errores.txt";
        const int estado = std::system(orden.c_str());
        return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
    }
    std::string salida() const { return carpeta.leer("salida.txt"); }
    std::string errores() const { return carpeta.leer("errores.txt"); }
};

TEST_F(Qzmotor, UnaRespuestaPorOrden) {
    // "Núñez" and "NÚÑEZ" in Windows-1252; the last line has no end, one has that of the other world.
    ASSERT_EQ(correr("/C/uno.QZC/10/2/A/4\n/O/uno.QZC/4\nI\\4\\N\xfa\xf1"
                     "ez\\b\nI\\4\\Alba\\c\r\n"
                     "S\\1\\4\\N\xfa\xf1"
                     "ez\nS\\1\\4\\N\xda\xd1"
                     "EZ\nF\\1\\4\nN\\4\nN\\4\nD\\1\\Y\\4\\N\xfa\xf1"
                     "ez\\b\nL\\1\\4\nI\\4\\Zoe\\a"),
              0)
        << errores();
    EXPECT_EQ(salida(), "0\t0\n0\t0\n0\t1\n0\t2\n0\t1\n12\t2\n0\t2\n0\t1\n9\t0\n0\t0\n0\t2\n0\t3\n");
    EXPECT_EQ(errores(), "") << "in a pipe it says nothing else";
    // What was inserted stands for the next run.
    ASSERT_EQ(correr("/O/uno.QZC/0\nG\\2\\0\\a\nK\n", "--sincronizar"), 0);
    EXPECT_EQ(salida(), "0\t0\n0\t3\n0\t3\n");
}

TEST_F(Qzmotor, OrdenesMalas) {
    carpeta.escribir("otra.QZC", "no keys at all");
    ASSERT_EQ(correr("\nX\\1\n/O/falta.QZC/1\n/O/otra.QZC/1\nF\\1\\9\n/C/sin/carpeta/x.QZC/10/1/A/1\n"
                     "/C/mal.QZC/10/11/A/1\nS\\1\n"),
              0);
    const auto texto = salida();
    EXPECT_EQ(std::count(texto.begin(), texto.end(), '\n'), 8) << texto;
    for (std::size_t inicio = 0; inicio < texto.size(); inicio = texto.find('\n', inicio) + 1)
        EXPECT_NE(texto[inicio], '0') << texto;
    EXPECT_EQ(carpeta.leer("otra.QZC"), "no keys at all");
    EXPECT_EQ(correr("", "--olvidar"), 2);
    EXPECT_EQ(correr("", "--help"), 0);
    EXPECT_NE(salida().find("Salida: 0 hecho"), std::string::npos);
}

// Who asks waits for the answer before the next command.
TEST_F(Qzmotor, ContestaAntesDeLaSiguienteOrden) {
    const std::string guion =
        std::string("mkfifo ida vuelta\n'") + TARVOLINE_BIN +
        "/qzmotor' < ida > vuelta &\nexec 3> ida 4< vuelta\n"
        "for orden in /C/x.QZC/5/1/A/1 /O/x.QZC/1 'I\\1\\hola'; do\n"
        "  echo \"$orden\" >&3; read -r -t 30 linea <&4 || exit 9; echo \"$linea\"\ndone\n"
        "exec 3>&-; wait $!";
    ASSERT_EQ(bash(guion), 0) << errores();
    EXPECT_EQ(salida(), "0\t0\n0\t0\n0\t1\n");
}

}  // namespace
}  // namespace tarvoline::pruebas
