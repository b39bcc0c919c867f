// The settings file: its form, damage by hand, what cannot be read.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

#include "platform/arbol_ajustes.h"
#include "sistemas.h"

namespace tarvoline::pruebas {

using namespace platform;

class AjustesArchivo : public testing::Test {
  protected:
    std::string ruta() const { return carpeta_.ruta("QZ/ajustes.ini"); }
    static unsigned modo(const std::string& ruta) {
        struct stat datos {};
        return ::stat(ruta.c_str(), &datos) == 0 ? datos.st_mode & 0777U : 0;
    }
    CarpetaPrueba carpeta_;
    std::unique_ptr<SistemaArchivos> archivos_ = crearSistemaArchivos();
    std::unique_ptr<ArbolAjustes> arbol_ = crearArbolAjustes(*archivos_, ruta());
};

TEST_F(AjustesArchivo, TieneFormaLegibleYSoloParaSuDuenno) {
    EXPECT_FALSE(arbol_->leer({"Veldorix", "Backup", "x"}));
    EXPECT_FALSE(carpeta_.hay("QZ"));
    arbol_->grabar({"Veldorix", "Backup", "Carpeta"}, "C:\\Datos");
    arbol_->grabar({"VXCRM", "NETBACKUP", "Active"}, " ");
    arbol_->grabar({"veldorix", "backup", "OrdenGrid"}, "3");
    EXPECT_EQ(carpeta_.leer("QZ/ajustes.ini"),
              "[Veldorix\\Backup]\nCarpeta=C:\\Datos\nOrdenGrid=3\n\n[VXCRM\\NETBACKUP]\nActive=\" \"\n");
    EXPECT_EQ(modo(ruta()), 0600U);
    EXPECT_EQ(modo(ruta() + ".bloqueo"), 0600U);
    EXPECT_EQ(modo(carpeta_.ruta("QZ")), 0700U);
}

TEST_F(AjustesArchivo, LasLineasDannadasQuedanDondeEstaban) {
    const std::string antes =
        "\xEF\xBB\xBFsin cabecera=1\r\n[Veldorix\\Backup]\r\n; nota\r\nbien = uno \r\nsin igual\r\n=sin "
        "clave\r\n"
        "mal=\"sin cerrar\r\nescape=\"\\q\"\r\ncola=\"a\" "
        "b\r\nbytes=\xE9\r\n[rota\r\nperdida=2\r\n\r\n[VELDORIX\\backup]\r\n"
        "BIEN=dos\r\n";
    carpeta_.escribir("QZ/ajustes.ini", antes);
    EXPECT_EQ(arbol_->leer({"Veldorix", "Backup", "bien"}), "dos");
    EXPECT_EQ(arbol_->listar().size(), 1U);
    const auto omitidas = arbol_->lineasOmitidas();
    EXPECT_EQ(omitidas.size(), 9U);
    EXPECT_THAT(omitidas.front(), testing::HasSubstr("line 1: sin cabecera=1"));
    EXPECT_THAT(omitidas.back(), testing::HasSubstr("perdida"));
    EXPECT_TRUE(arbol_->lineasOmitidas().empty());

    arbol_->grabar({"Veldorix", "Backup", "nueva"}, "3");
    EXPECT_EQ(carpeta_.leer("QZ/ajustes.ini"), antes.substr(3) + "nueva=3\r\n");
    // A key that stood twice goes as a whole.
    arbol_->borrar({"Veldorix", "Backup", "bien"});
    EXPECT_FALSE(arbol_->leer({"Veldorix", "Backup", "bien"}));
    EXPECT_THAT(carpeta_.leer("QZ/ajustes.ini"), testing::HasSubstr("mal=\"sin cerrar\r\n"));
}

TEST_F(AjustesArchivo, VeLoQueEscribeOtro) {
    const auto otro = crearArbolAjustes(*archivos_, ruta());
    for (int i = 0; i < 20; ++i) {
        otro->grabar({"P", "S", "k"}, std::to_string(i % 3));
        ASSERT_EQ(arbol_->leer({"P", "S", "k"}), std::to_string(i % 3));
    }
    carpeta_.escribir("QZ/ajustes.ini", "[p\\s]\nk=a mano\n");
    EXPECT_EQ(arbol_->leer({"P", "S", "k"}), "a mano");
}

TEST_F(AjustesArchivo, UnoQuietoNoSeLeeDosVeces) {
    namespace fs = std::filesystem;
    carpeta_.escribir("QZ/ajustes.ini", "[p\\s]\nk=1\n");
    const auto hace = fs::file_time_type::clock::now() - std::chrono::hours(1);
    fs::last_write_time(ruta(), hace);
    ArchivosDefectuosos defectuosos(*archivos_);
    const auto arbol = crearArbolAjustes(defectuosos, ruta());
    EXPECT_EQ(arbol->leer({"p", "s", "k"}), "1");
    defectuosos.fallar(
        {.operacion = Operacion::abrir, .mascara = "ajustes.ini", .numero = 70, .siempre = true});
    EXPECT_EQ(arbol->leer({"p", "s", "k"}), "1");
    defectuosos.sanar();
    // Each of these shows, whatever date it bears.
    carpeta_.escribir("QZ/ajustes.ini", "[p\\s]\nk=2\n");
    EXPECT_EQ(arbol->leer({"p", "s", "k"}), "2");
    arbol_->grabar({"p", "s", "k"}, "3");
    fs::last_write_time(ruta(), hace);
    EXPECT_EQ(arbol->leer({"p", "s", "k"}), "3");
    arbol_->grabarLigero({"p", "s", "k"}, "4");
    EXPECT_EQ(arbol->leer({"p", "s", "k"}), "4");
    archivos_->borrar(ruta());
    EXPECT_FALSE(arbol->leer({"p", "s", "k"}));
    EXPECT_FALSE(arbol->leer({"p", "s", "k"}));
    arbol_->grabar({"p", "s", "k"}, "5");
    EXPECT_EQ(arbol->leer({"p", "s", "k"}), "5");
}

TEST_F(AjustesArchivo, UnoIlegibleNoSeSobrescribe) {
    carpeta_.escribir("QZ/ajustes.ini", "[p\\s]\nk=1\n");
    for (const auto operacion : {Operacion::abrir, Operacion::leer}) {
        ArchivosDefectuosos defectuosos(*archivos_);
        const auto arbol = crearArbolAjustes(defectuosos, ruta());
        defectuosos.fallar({.operacion = operacion, .mascara = "ajustes.ini", .numero = 70, .siempre = true});
        EXPECT_THROW(arbol->leer({"p", "s", "k"}), ErrorAjustes);
        EXPECT_THROW(arbol->listar(), ErrorAjustes);
        EXPECT_THROW(arbol->lineasOmitidas(), ErrorAjustes);
        EXPECT_THROW(arbol->grabar({"p", "s", "k"}, "2"), ErrorAjustes);
        EXPECT_THROW(arbol->borrar({"p", "s", "k"}), ErrorAjustes);
        EXPECT_EQ(carpeta_.leer("QZ/ajustes.ini"), "[p\\s]\nk=1\n");
    }
}

TEST_F(AjustesArchivo, UnaCarpetaEnSuSitioEsUnError) {
    archivos_->crearDirectorios(ruta());
    EXPECT_THROW(arbol_->leer({"p", "s", "k"}), ErrorAjustes);
    EXPECT_THROW(arbol_->grabar({"p", "s", "k"}, "2"), ErrorAjustes);
    EXPECT_TRUE(archivos_->estado(ruta())->esDirectorio);
}

TEST_F(AjustesArchivo, ConElDiscoLlenoQuedaLoViejo) {
    arbol_->grabar({"p", "s", "k"}, "1");
    ArchivosDefectuosos defectuosos(*archivos_);
    defectuosos.limitarDisco(5);
    EXPECT_THROW(crearArbolAjustes(defectuosos, ruta())->grabar({"p", "s", "k"}, "2"), ErrorAjustes);
    EXPECT_EQ(arbol_->leer({"p", "s", "k"}), "1");
    EXPECT_EQ(archivos_->listar(carpeta_.ruta("QZ")).size(), 2U);
}

TEST_F(AjustesArchivo, ElDeLaMaquinaSoloSeLee) {
    carpeta_.escribir("QZ/ajustes.ini", "[p\\s]\nk=1\n");
    const auto maquina = crearArbolMaquina(*archivos_, ruta());
    EXPECT_EQ(maquina->leer({"P", "S", "K"}), "1");
    EXPECT_THROW(maquina->grabar({"p", "s", "k"}, "2"), ErrorAjustes);
    EXPECT_THROW(maquina->borrar({"p", "s", "k"}), ErrorAjustes);
    EXPECT_FALSE(carpeta_.hay("QZ/ajustes.ini.bloqueo"));
    EXPECT_EQ(crearArbolMaquina(*archivos_, carpeta_.ruta("no"))->listar().size(), 0U);
}

}  // namespace tarvoline::pruebas
