#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>

#include "apoyo/carpeta_prueba.h"
#include "apoyo/variables_proceso.h"

namespace tarvoline {
namespace {

namespace fs = std::filesystem;

struct Resultado {
    int codigo = -1;
    std::string texto;  // both streams
};

struct ProgramaAjustes : testing::Test {
    pruebas::CarpetaPrueba carpeta;
    pruebas::VariablesProceso variables;

    void SetUp() override {
        variables.poner("HOME", carpeta.ruta());
        variables.poner("XDG_CONFIG_HOME", carpeta.ruta("config"));
    }
    // Arguments as a shell reads them.
    static Resultado correr(const std::string& argumentos) {
        const std::string orden = std::string(TARVOLINE_BIN) + "/tarvoline-ajustes " + argumentos + " 2>&1";
        FILE* tubo = popen(orden.c_str(), "r");
        Resultado resultado;
        std::array<char, 4096> trozo{};
        while (tubo != nullptr) {
            const std::size_t leidos = std::fread(trozo.data(), 1, trozo.size(), tubo);
            if (leidos == 0) {
                break;
            }
            resultado.texto.append(trozo.data(), leidos);
        }
        const int estado = tubo == nullptr ? -1 : pclose(tubo);
        resultado.codigo = estado >= 0 && WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
        return resultado;
    }
};

TEST_F(ProgramaAjustes, LoGrabadoSeLee) {
    EXPECT_EQ(correr("grabar EMP1 '\"/datos/Año nuevo.QZT\"' -s NETBACKUP -p VELDORIX").codigo, 0);
    const auto leido = correr("leer emp1 -s netbackup");
    EXPECT_EQ(leido.codigo, 0);
    EXPECT_EQ(leido.texto, "\"/datos/Año nuevo.QZT\"\n");
    EXPECT_EQ(correr("leer EMP1 -s NETBACKUP -p VXCRM").codigo, 1) << "another product's tree";
    EXPECT_EQ(fs::status(carpeta.ruta("config/QZ/ajustes.ini")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(ProgramaAjustes, SinValorHayDefectoOFallo) {
    const auto falta = correr("leer language");
    EXPECT_EQ(falta.codigo, 1);
    EXPECT_EQ(falta.texto, "");
    EXPECT_EQ(correr("leer language -d español.qzi").texto, "español.qzi\n");
    EXPECT_EQ(correr("grabar language ''").codigo, 0);
    EXPECT_EQ(correr("leer language -d otro").texto, "otro\n") << "an empty value is none";
    EXPECT_EQ(correr("leer language -d ''").codigo, 0);
}

TEST_F(ProgramaAjustes, BorrarQuitaLaClave) {
    correr("grabar uno 1");
    correr("grabar dos 2");
    EXPECT_EQ(correr("borrar UNO").codigo, 0);
    EXPECT_EQ(correr("borrar uno").codigo, 1);
    EXPECT_EQ(carpeta.leer("config/QZ/ajustes.ini").find("uno"), std::string::npos);
    EXPECT_EQ(correr("leer dos").texto, "2\n");
}

TEST_F(ProgramaAjustes, ListarEnLineasYEnJson) {
    correr("grabar User maria -s NETBACKUP -p VXCRM");
    correr("grabar Nota \"$(printf 'a\\nb')\" -s Otra");
    EXPECT_EQ(correr("listar").texto, "VXCRM\\NETBACKUP\\User=maria\nVeldorix\\Otra\\Nota=a\\nb\n");
    EXPECT_EQ(correr("listar -p vxcrm").texto, "VXCRM\\NETBACKUP\\User=maria\n");
    EXPECT_EQ(
        correr("listar -s otra --json").texto,
        "[\n  {\n    \"clave\": \"Nota\",\n    \"producto\": \"Veldorix\",\n    \"seccion\": \"Otra\",\n"
        "    \"valor\": \"a\\nb\"\n  }\n]\n");
    EXPECT_EQ(correr("listar -s nada --json").texto, "[]\n");
}

TEST_F(ProgramaAjustes, UnArchivoDaniado) {
    carpeta.escribir("config/QZ/ajustes.ini", "[Veldorix\\Settings]\nuno=1\nesto no es nada\n");
    const auto leido = correr("leer uno");
    EXPECT_EQ(leido.codigo, 0);
    EXPECT_NE(leido.texto.find("1\n"), std::string::npos);
    EXPECT_NE(leido.texto.find("esto no es nada"), std::string::npos) << "the line is named";
    correr("grabar dos 2");
    EXPECT_NE(carpeta.leer("config/QZ/ajustes.ini").find("esto no es nada\n"), std::string::npos)
        << "and kept";
}

TEST_F(ProgramaAjustes, UnArchivoIlegibleNoSeSobrescribe) {
    fs::create_directories(carpeta.ruta("config/QZ/ajustes.ini"));
    const auto grabado = correr("grabar uno 1");
    EXPECT_EQ(grabado.codigo, 3);
    EXPECT_NE(grabado.texto.find("tarvoline-ajustes: "), std::string::npos);
    EXPECT_EQ(correr("leer uno").codigo, 3);
    EXPECT_EQ(correr("listar").codigo, 3);
    EXPECT_EQ(correr("borrar uno").codigo, 3);
    EXPECT_TRUE(fs::is_directory(carpeta.ruta("config/QZ/ajustes.ini")));
}

TEST_F(ProgramaAjustes, OrdenesMalEscritas) {
    for (const char* orden : {"", "leer", "grabar uno", "olvidar uno", "leer uno dos", "leer uno -x"}) {
        EXPECT_EQ(correr(orden).codigo, 2) << orden;
    }
    const auto ayuda = correr("--help");
    EXPECT_EQ(ayuda.codigo, 0);
    EXPECT_NE(ayuda.texto.find("Códigos de salida"), std::string::npos);
}

}  // namespace
}  // namespace tarvoline
