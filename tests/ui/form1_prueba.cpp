// The terms window as a person uses it.
#include "ui/form1.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

#include "persona.h"
#include "workflows/mundo_flujos.h"

namespace tarvoline::ui {
namespace {

using pruebas::hijo;

class PruebaForm1 : public ::testing::Test {
  protected:
    PruebaForm1() : terminos(mundo.flujos) {
        const auto& carpeta = mundo.nucleo.carpeta();
        mundo.nucleo.ajustes.GrabarRegistro("directory", mundo.nucleo.ruta("programa/bin"));
        carpeta.escribir("programa/bin/Terminos Y Condiciones.txt", "Condici\xF3n uno\r\nDos\r\n");
        carpeta.escribir("programa/bin/Terms and Conditions.txt", "Condition one\r\n");
    }
    void abrir(std::function<void(QDialog&)> paso) {
        persona.ante(std::move(paso));
        Form1(terminos, mundo.nucleo.entorno, nullptr).exec();
    }
    std::string grabado() { return mundo.nucleo.almacen.Leer("Terminos y condiciones"); }

    pruebas::MundoFlujos mundo;
    workflows::Terminos terminos;
    pruebas::Persona persona;
};

TEST_F(PruebaForm1, CadaBotonGrabaSuIndiceYElMarcoNada) {
    abrir([](QDialog& dialogo) {
        EXPECT_EQ(hijo<QPlainTextEdit>(dialogo, "terminos").toPlainText(), "Condición uno\nDos\n");
        EXPECT_EQ(hijo<QPushButton>(dialogo, "Command1(0)").text(), "<2151>");
        EXPECT_EQ(hijo<QPushButton>(dialogo, "Command1(1)").text(), "<2129>");
        dialogo.close();
    });
    EXPECT_EQ(grabado(), "");
    EXPECT_FALSE(mundo.nucleo.estado.gRefrescarEspacio);
    for (const char* indice : {"1", "0"}) {
        abrir([indice](QDialog& dialogo) {
            QTest::mouseClick(&hijo(dialogo, QString("Command1(%1)").arg(indice)), Qt::LeftButton);
        });
        EXPECT_EQ(grabado(), indice);
    }
    EXPECT_TRUE(mundo.nucleo.estado.gRefrescarEspacio);
}

TEST_F(PruebaForm1, ElTextoSeLeeYSeCopiaPeroNoSeCambia) {
    abrir([](QDialog& dialogo) {
        auto& texto = hijo<QPlainTextEdit>(dialogo, "terminos");
        texto.setFocus();
        QTest::keyClick(&texto, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&texto, Qt::Key_C, Qt::ControlModifier);
        for (const auto tecla :
             {Qt::Key_X, Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Space, Qt::Key_Return}) {
            QTest::keyClick(&texto, tecla);
        }
        QTest::keyClick(&texto, Qt::Key_X, Qt::ControlModifier);
        QTest::keyClick(&texto, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(texto.toPlainText(), "Condición uno\nDos\n");
        EXPECT_TRUE(dialogo.isVisible()) << "Enter gives no answer";
        QTest::keyClick(&texto, Qt::Key_Tab);
        EXPECT_FALSE(texto.hasFocus());
        QTest::keyClick(&dialogo, Qt::Key_Escape);
    });
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "Condición uno\nDos\n");
    EXPECT_EQ(grabado(), "");
}

TEST_F(PruebaForm1, OtroIdiomaLeeElInglesYSinArchivoNoHayVentana) {
    mundo.nucleo.ajustes.GrabarRegistro("language", "français.qzi");
    abrir([](QDialog& dialogo) {
        EXPECT_EQ(hijo<QPlainTextEdit>(dialogo, "terminos").toPlainText(), "Condition one\n");
        dialogo.close();
    });
    std::filesystem::remove(mundo.nucleo.ruta("programa/bin/Terms and Conditions.txt"));
    EXPECT_THROW(Form1(terminos, mundo.nucleo.entorno, nullptr), std::exception);
}

}  // namespace
}  // namespace tarvoline::ui
