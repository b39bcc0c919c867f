// qztabla as a person runs it.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>

#include "apoyo/carpeta_prueba.h"
#include "platform/archivos.h"

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
    EXPECT_NE(salida().find("mala.tabla:2: el ancho ha de ser un número"), std::string::npos) << salida();
    EXPECT_EQ(carpeta.leer("MALA.QZA"), "as it was");
    EXPECT_EQ(correr("definir falta.tabla MALA.QZA"), 1);
    EXPECT_EQ(correr("definir mala.tabla"), 2);
    EXPECT_EQ(correr(""), 2);
    EXPECT_EQ(correr("--help"), 0);
    EXPECT_NE(salida().find("definir"), std::string::npos);
}

TEST_F(Qztabla, UnaLineaMalEscritaDiceQueLeFalta) {
    const std::pair<const char*, const char*> casos[] = {
        {"", "qztabla: falta la orden\n"},
        {"volcar", "qztabla: falta TABLA\n"},
        {"volcar uno dos", "qztabla: sobra dos\n"},
        {"volcar uno --definicion", "qztabla: --definicion: no lleva esa cantidad de valores\n"},
    };
    for (const auto& [linea, dicho] : casos) {
        EXPECT_EQ(correr(linea), 2) << linea;
        EXPECT_EQ(salida(), std::string(dicho) + "Con --help, la ayuda.\n");
    }
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
    EXPECT_NE(salida().find("malo.plan:2: 570: falta su mayor 57"), std::string::npos) << salida();
    EXPECT_EQ(carpeta.leer("PLANC07.QZD"), "as it was");
    for (const auto* destino : {"PLANC07.QZC", "PLAN.QZD", "EXTRA07.QZD", "PLANC007.QZD"}) {
        EXPECT_EQ(correr(std::string("plan malo.plan ") + destino), 1) << destino;
        EXPECT_NE(salida().find("un plan se llama PLANCnn.QZD"), std::string::npos) << salida();
    }
}

// A chart of three accounts; one has all that is escaped in its notes.
struct QztablaPlan : Qztabla {
    static constexpr std::size_t registro = 564;

    QztablaPlan() {
        carpeta.escribir("mio.plan", "5 Cuentas financieras\n57 Tesorería\n570 Caja, \"efectivo\"\n");
        EXPECT_EQ(correr("plan mio.plan PLANC07.QZD"), 0) << salida();
        auto datos = carpeta.leer("PLANC07.QZD");
        constexpr std::size_t notas = 10 + 40 + 1;
        datos.replace(2 * registro + notas, 12, "a\tb\r\nc\\nd\xF1\\\\");
        carpeta.escribir("PLANC07.QZD", datos);
    }
    // What a shell does with it must come out well.
    void exigir(const std::string& guion) const {
        const auto orden = "cd '" + carpeta.ruta() + "' && PATH=" + TARVOLINE_BIN + ":$PATH && " + guion;
        EXPECT_EQ(std::system(orden.c_str()), 0) << guion;
    }
};

TEST_F(QztablaPlan, LaHuellaEsLaDeLoQueSeVuelca) {
    exigir(
        "qztabla verificar PLANC07.QZD | grep -q \"^SHA-256 de volcar: $(qztabla volcar PLANC07.QZD | "
        "sha256sum | cut -c1-64)$\"");
}

// The dump by an independent reader: unescaped, it has what the JSON lines have.
TEST_F(QztablaPlan, ElVolcadoYSuJsonDicenLoMismo) {
    carpeta.escribir("cotejo.py", R"(
import json, re
claro = lambda v: re.sub(r'\\(.)', lambda m: {'t': '\t', 'r': '\r', 'n': '\n', '\\': '\\'}[m[1]], v)
lineas = open('plan.txt', newline='', encoding='utf-8').read().split('\n')
assert lineas.pop() == ''
titulos, *filas = [[claro(v) for v in linea.split('\t')] for linea in lineas]
objetos = [json.loads(linea) for linea in open('plan.json', encoding='utf-8')]
assert len(filas) == len(objetos) == 3 and titulos[:3] == ['REGISTRO', 'CUENTA', 'TITULO'], titulos
for fila, objeto in zip(filas, objetos):
    assert list(objeto) == titulos
    for texto, valor in zip(fila, objeto.values()):
        assert (texto == valor) if isinstance(valor, str) else (float(texto) == valor), (texto, valor)
assert objetos[1]['TITULO'] == 'Tesorería' and objetos[1]['DEBE ENERO'] == 0
assert objetos[2]['TITULO'] == 'Caja, "efectivo"'
assert objetos[2]['NOTAS'] == 'a\tb\r\nc\\ndñ\\\\', objetos[2]
)");
    exigir(
        "qztabla volcar PLANC07.QZD >plan.txt && qztabla volcar --json PLANC07.QZD >plan.json && "
        "python3 cotejo.py");
}

TEST_F(QztablaPlan, VerificarYReindexar) {
    EXPECT_EQ(correr("verificar PLANC07.QZD"), 0);
    EXPECT_EQ(salida().find('\r'), std::string::npos) << "progress in a pipe";
    auto datos = carpeta.leer("PLANC07.QZD");
    carpeta.escribir("PLANC07.QZD", datos.replace(registro, 2, "58") + datos.substr(0, registro));
    EXPECT_EQ(correr("verificar PLANC07.QZD"), 1);
    const auto halladas = salida();
    EXPECT_NE(halladas.find("Registro 2: la clave 1 lo tiene con «57» y sus campos dicen «58».\n"),
              std::string::npos)
        << halladas;
    EXPECT_NE(halladas.find("Registro 4: no está en ninguna clave.\n"), std::string::npos) << halladas;
    {
        const auto archivos = platform::crearSistemaArchivos();
        const auto abierta = archivos->abrir(carpeta.ruta("PLANC07.QZD"), platform::Apertura::escritura,
                                             platform::Comparticion::compartida);
        EXPECT_EQ(correr("reindexar PLANC07.QZD"), 4);
        EXPECT_EQ(correr("verificar PLANC07.QZD"), 1);
        EXPECT_EQ(correr("volcar PLANC07.QZD"), 0);
    }
    EXPECT_EQ(correr("reindexar PLANC07.QZD"), 0);
    EXPECT_NE(salida().find("Registro 4: adoptado.\n"), std::string::npos) << salida();
    EXPECT_TRUE(carpeta.hay("anterior.PLANC07.QZC"));
    EXPECT_EQ(correr("verificar PLANC07.QZD"), 0) << salida();
}

TEST_F(QztablaPlan, LoQueNoSePuedeLeer) {
    EXPECT_EQ(correr("verificar PLANC08.QZD"), 3);
    EXPECT_EQ(correr("verificar PLANC07.QZC"), 3);
    EXPECT_NE(salida().find("no es el nombre de una tabla"), std::string::npos) << salida();
    EXPECT_EQ(correr("verificar --definicion mio.plan PLANC07.QZD"), 3);
    EXPECT_EQ(correr("verificar"), 2);
    EXPECT_EQ(correr("volcar PLANC08.QZD"), 1);
    exigir("qztabla volcar PLANC07.QZD >/dev/full 2>error.txt; test $? = 1 && grep -q escribir error.txt");
    EXPECT_EQ(correr("reindexar PLANC08.QZD"), 1);
}

}  // namespace
}  // namespace tarvoline::pruebas
