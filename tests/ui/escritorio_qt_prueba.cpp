// The desktop of the window, its dialogs driven as a person does.
#include "ui/escritorio_qt.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <filesystem>

#include "apoyo/carpeta_prueba.h"
#include "persona.h"

namespace tarvoline::ui {
namespace {

using pruebas::hijo;
using pruebas::Persona;

class PruebaEscritorioQt : public ::testing::Test {
  protected:
    EscritorioQt escritorio;
    Persona persona;
};

TEST_F(PruebaEscritorioQt, UnaCajaTraeTituloIconoYTextoQueSePuedeCopiar) {
    const std::pair<core::Icono, QMessageBox::Icon> iconos[] = {
        {core::Icono::ninguno, QMessageBox::NoIcon},
        {core::Icono::informacion, QMessageBox::Information},
        {core::Icono::exclamacion, QMessageBox::Warning},
        {core::Icono::pregunta, QMessageBox::Question},
        {core::Icono::parada, QMessageBox::Critical}};
    for (const auto& [icono, esperado] : iconos) {
        persona.ante([esperado = esperado](QDialog& dialogo) {
            auto& caja = dynamic_cast<QMessageBox&>(dialogo);
            EXPECT_EQ(caja.icon(), esperado);
            EXPECT_EQ(caja.windowTitle(), "Peña");
            EXPECT_EQ(caja.text(), "<b>uno</b>\ndos & tres");
            EXPECT_EQ(caja.textFormat(), Qt::PlainText);
            EXPECT_TRUE(caja.textInteractionFlags() & Qt::TextSelectableByMouse);
            EXPECT_EQ(caja.accessibleDescription(), caja.text());
            QTest::keyClick(&caja, Qt::Key_Return);
        });
        escritorio.Mensaje({"<b>uno</b>\r\ndos & tres", icono, "Peña"});
    }
    persona.ante([](QDialog& dialogo) {
        EXPECT_EQ(dialogo.windowTitle(), "Tarvoline");
        dialogo.reject();
    });
    escritorio.Mensaje({"sin título", core::Icono::ninguno, {}});
}

TEST_F(PruebaEscritorioQt, LasPreguntasHablanElIdiomaYEmpiezanEnSuBoton) {
    const auto ante = [this](const char* si, const char* no, bool siPorDefecto, Qt::Key tecla) {
        persona.ante([=](QDialog& dialogo) {
            auto& caja = dynamic_cast<QMessageBox&>(dialogo);
            EXPECT_EQ(caja.button(QMessageBox::Yes)->text(), QString::fromUtf8(si));
            EXPECT_EQ(caja.button(QMessageBox::No)->text(), QString::fromUtf8(no));
            EXPECT_EQ(caja.defaultButton(), caja.button(siPorDefecto ? QMessageBox::Yes : QMessageBox::No));
            QTest::keyClick(&caja, tecla);
        });
    };
    ante("&Sí", "&No", true, Qt::Key_Return);
    EXPECT_TRUE(escritorio.Preguntar({"¿?", core::Icono::pregunta, {}}));
    ante("&Sí", "&No", false, Qt::Key_Return);
    EXPECT_FALSE(escritorio.Preguntar({"¿?", core::Icono::pregunta, {}}, false));
    escritorio.ponerPalabras(Palabras(false));
    ante("&Yes", "&No", true, Qt::Key_Escape);
    EXPECT_FALSE(escritorio.Preguntar({"?", core::Icono::pregunta, {}}));

    for (const bool acepta : {true, false}) {
        persona.ante([acepta](QDialog& dialogo) {
            auto& caja = dynamic_cast<QMessageBox&>(dialogo);
            QTest::mouseClick(caja.button(acepta ? QMessageBox::Ok : QMessageBox::Cancel), Qt::LeftButton);
        });
        EXPECT_EQ(escritorio.Confirmar({"?", core::Icono::pregunta, {}}), acepta);
    }
}

TEST_F(PruebaEscritorioQt, LaPeticionOcultaLoEscritoYCortaEnSuLongitud) {
    persona.ante([](QDialog& dialogo) {
        auto& linea = hijo<QLineEdit>(dialogo, "respuesta");
        EXPECT_EQ(linea.echoMode(), QLineEdit::Password);
        EXPECT_EQ(linea.accessibleName(), "Clave & más");
        QTest::keyClicks(&linea, "abcdef");
        QTest::keyClick(&linea, Qt::Key_Return);
    });
    EXPECT_EQ(escritorio.Pedir({"Empresa", "Clave & más"}), "abcd");

    persona.ante([](QDialog& dialogo) {
        EXPECT_EQ(hijo<QLineEdit>(dialogo, "respuesta").echoMode(), QLineEdit::Normal);
        QTest::mouseClick(&hijo<QPushButton>(dialogo, "aceptar"), Qt::LeftButton);
    });
    EXPECT_EQ(escritorio.Pedir({"t", "p", false, 20}), "") << "an empty answer is an answer";

    persona.ante([](QDialog& dialogo) {
        QTest::keyClicks(&hijo<QLineEdit>(dialogo, "respuesta"), "abc");
        QTest::keyClick(&dialogo, Qt::Key_Escape);
    });
    EXPECT_EQ(escritorio.Pedir({"t", "p"}), std::nullopt);
}

core::EntradaDatos entradaDeTodo() {
    return {"Datos",
            {{"Usuario", core::TipoCampo::texto, 5, "ana", {}},
             {"Clave", core::TipoCampo::oculto, 4, "x", {}},
             {"Empresa", core::TipoCampo::eleccion, 0, "Beta", {"Alfa", "Beta", "Gamma, S.L."}},
             {"Guardar", core::TipoCampo::casilla, 0, "0", {}},
             {"Sobrescribir", core::TipoCampo::opcion, 0, {}, {}},
             {"Pérez & Hijos", core::TipoCampo::opcion, 0, {}, {}}},
            1};
}

TEST_F(PruebaEscritorioQt, ElDialogoDeDatosMuestraSusValoresYDevuelveLosEscritos) {
    auto datos = entradaDeTodo();
    persona.ante([](QDialog& dialogo) {
        EXPECT_EQ(hijo<QLineEdit>(dialogo, "campo1").text(), "ana");
        EXPECT_EQ(hijo<QLineEdit>(dialogo, "campo2").echoMode(), QLineEdit::Password);
        EXPECT_EQ(hijo<QComboBox>(dialogo, "campo3").currentText(), "Beta");
        EXPECT_TRUE(hijo<QAbstractButton>(dialogo, "campo6").isChecked());
        EXPECT_EQ(hijo<QAbstractButton>(dialogo, "campo6").accessibleName(), "Pérez & Hijos");
        EXPECT_TRUE(hijo<QLineEdit>(dialogo, "campo1").hasFocus());
        QTest::keyClicks(&hijo(dialogo, "campo1"), "belen");
        hijo<QLineEdit>(dialogo, "campo2").clear();
        QTest::keyClicks(&hijo(dialogo, "campo2"), "12345");
        QTest::keyClick(&hijo(dialogo, "campo3"), Qt::Key_Down);
        QTest::keyClick(&hijo(dialogo, "campo4"), Qt::Key_Space);
        hijo(dialogo, "campo6").setFocus();
        QTest::keyClick(&hijo(dialogo, "campo6"), Qt::Key_Up);
        QTest::mouseClick(&hijo(dialogo, "aceptar"), Qt::LeftButton);
    });
    ASSERT_TRUE(escritorio.PedirDatos(datos));
    EXPECT_EQ(datos.campos[0].valor, "belen");
    EXPECT_EQ(datos.campos[1].valor, "1234");
    EXPECT_EQ(datos.campos[2].valor, "Gamma, S.L.");
    EXPECT_EQ(datos.campos[3].valor, "1");
    EXPECT_EQ(datos.opcion, 0);
}

TEST_F(PruebaEscritorioQt, UnDialogoDeDatosCanceladoNoCambiaNada) {
    auto datos = entradaDeTodo();
    persona.ante([](QDialog& dialogo) {
        hijo<QLineEdit>(dialogo, "campo1").setText("otro");
        hijo<QCheckBox>(dialogo, "campo4").setChecked(true);
        hijo<QAbstractButton>(dialogo, "campo5").setChecked(true);
        dialogo.close();
    });
    EXPECT_FALSE(escritorio.PedirDatos(datos));
    EXPECT_EQ(datos.campos[0].valor, "ana");
    EXPECT_EQ(datos.campos[3].valor, "0");
    EXPECT_EQ(datos.opcion, 1);
}

TEST_F(PruebaEscritorioQt, UnaEleccionSinNadaQueElegirContestaVacio) {
    core::EntradaDatos datos{"Datos", {{"Empresa", core::TipoCampo::eleccion, 0, "Beta", {}}}, 0};
    persona.ante([](QDialog& dialogo) { dialogo.accept(); });
    EXPECT_TRUE(escritorio.PedirDatos(datos));
    EXPECT_EQ(datos.campos[0].valor, "");
}

TEST_F(PruebaEscritorioQt, LosDialogosDeArchivoBuscanAmbasCajasDeLetra) {
    pruebas::CarpetaPrueba carpeta;
    carpeta.escribir("UNO.QZT", "1");
    carpeta.escribir("dos.qzt", "2");
    const auto elegir = [&](const QString& filtro, const std::string& nombre) {
        persona.ante([=, &carpeta](QDialog& dialogo) {
            auto& archivos = dynamic_cast<QFileDialog&>(dialogo);
            EXPECT_EQ(archivos.nameFilters(), QStringList(filtro));
            EXPECT_EQ(archivos.directory().absolutePath().toStdString() + "/", carpeta.ruta());
            hijo<QLineEdit>(dialogo, "fileNameEdit").setText(QString::fromStdString(nombre));
            dialogo.accept();
        });
    };
    const core::EleccionArchivo empresa{"Elija", {"Empresas Veldorix", "*.qzt"}, carpeta.ruta(), {}};
    elegir("Empresas Veldorix (*.qzt *.QZT)", "UNO.QZT");
    EXPECT_EQ(escritorio.ElegirArchivo(empresa), carpeta.ruta("UNO.QZT"));
    persona.ante([](QDialog& dialogo) { dialogo.reject(); });
    EXPECT_EQ(escritorio.ElegirArchivo(empresa), std::nullopt);

    // Whoever writes the file asks about one that is there; a second question would be one too many.
    elegir("Todos los archivos (*)", "dos.qzt");
    EXPECT_EQ(escritorio.GuardarComo({{}, {"*.*", "*.*"}, carpeta.ruta(), "x.zip"}), carpeta.ruta("dos.qzt"));

    std::filesystem::create_directories(carpeta.ruta("año"));
    persona.ante([&](QDialog& dialogo) {
        dynamic_cast<QFileDialog&>(dialogo).setDirectory(QString::fromStdString(carpeta.ruta()));
        hijo<QLineEdit>(dialogo, "fileNameEdit").setText("año");
        dialogo.accept();
    });
    EXPECT_EQ(escritorio.ElegirCarpeta("Carpeta"), carpeta.ruta("año"));
}

TEST_F(PruebaEscritorioQt, ElInformeAlineaSusNumerosYSeCopiaEntero) {
    persona.ante([](QDialog& dialogo) {
        auto& tabla = hijo<QTableWidget>(dialogo, "listado");
        ASSERT_EQ(tabla.rowCount(), 2);
        ASSERT_EQ(tabla.columnCount(), 3);
        EXPECT_EQ(tabla.horizontalHeaderItem(2)->text(), "Espacio (MB)");
        EXPECT_TRUE(tabla.item(1, 2)->textAlignment() & Qt::AlignRight);
        EXPECT_TRUE(tabla.item(1, 0)->textAlignment() & Qt::AlignLeft);
        QTest::mouseClick(&hijo(dialogo, "copiar"), Qt::LeftButton);
        QTest::keyClick(&dialogo, Qt::Key_Escape);
    });
    escritorio.MostrarListado({"Espacio", "Usuario,Nombre,Espacio (MB)", "31/05/2024", "0,0,3",
                               "ana\tAna Gil\t1.234,50\r\nluis\t\t0,00\r\n"});
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              "Usuario\tNombre\tEspacio (MB)\nana\tAna Gil\t1.234,50\nluis\t\t0,00\n");
}

TEST_F(PruebaEscritorioQt, UnProgramaEntreComillasArrancaYUnoQueFaltaSeDice) {
    pruebas::CarpetaPrueba carpeta;
    const auto programa = carpeta.ruta("un programa");
    carpeta.escribir("un programa",
                     "#!/bin/sh\necho \"$1\" > \"$0.hecho.tmp\" && mv \"$0.hecho.tmp\" \"$0.hecho\"\n");
    std::filesystem::permissions(programa, std::filesystem::perms::owner_all);
    escritorio.Abrir("\"" + programa + "\" \"dos palabras\"");
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(programa + ".hecho"); }, 20000));
    EXPECT_EQ(carpeta.leer("un programa.hecho"), "dos palabras\n");

    persona.ante([](QDialog& dialogo) {
        EXPECT_TRUE(dynamic_cast<QMessageBox&>(dialogo).text().contains("no-existe"));
        dialogo.accept();
    });
    escritorio.Abrir("\"" + carpeta.ruta("no-existe") + "\"");
}

TEST_F(PruebaEscritorioQt, ElPunteroEsperaYDescansaMientrasHayUnDialogo) {
    escritorio.Puntero(true);
    escritorio.Puntero(true);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    persona.ante([](QDialog& dialogo) {
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        dialogo.accept();
    });
    escritorio.Mensaje({"texto", core::Icono::ninguno, {}});
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    escritorio.Puntero(false);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    escritorio.Puntero(false);
}

TEST_F(PruebaEscritorioQt, ElTurnoAtiendeALaPersonaYElLatidoSoloPinta) {
    QPushButton boton("x");
    int pulsaciones = 0;
    QObject::connect(&boton, &QPushButton::clicked, &boton, [&] { ++pulsaciones; });
    boton.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&boton));
    const auto pulsar = [&] {
        QTest::mousePress(boton.windowHandle(), Qt::LeftButton, {}, boton.rect().center());
        QTest::mouseRelease(boton.windowHandle(), Qt::LeftButton, {}, boton.rect().center());
    };
    pulsar();
    escritorio.Turno();
    EXPECT_EQ(pulsaciones, 1);

    escritorio.pedirFin();
    escritorio.Latido();
    EXPECT_THROW(escritorio.Turno(), core::FinDePrograma);
}

TEST_F(PruebaEscritorioQt, UnaCajaSeAbreSobreElDialogoQueEstaAbierto) {
    QWidget ventana;
    ventana.show();
    escritorio.ponerVentana(&ventana);
    QDialog primero(&ventana);
    persona.ante([&](QDialog& dialogo) {
        ASSERT_EQ(&dialogo, &primero);
        escritorio.Mensaje({"encima", core::Icono::ninguno, {}});
        primero.reject();
    });
    persona.ante([&](QDialog& dialogo) {
        EXPECT_EQ(dialogo.parentWidget(), &primero);
        dialogo.accept();
    });
    primero.exec();
    persona.ante([&](QDialog& dialogo) {
        EXPECT_EQ(dialogo.parentWidget(), &ventana);
        dialogo.accept();
    });
    escritorio.Mensaje({"sobre la ventana", core::Icono::ninguno, {}});
}

}  // namespace
}  // namespace tarvoline::ui
