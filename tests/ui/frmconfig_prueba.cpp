// The configuration window as a person uses it, over a company on disk.
#include "ui/frmconfig.h"

#include <QAbstractButton>
#include <QTest>
#include <QToolButton>

#include "apoyo/archivos_defectuosos.h"
#include "persona.h"
#include "workflows/mundo_flujos.h"

namespace tarvoline::ui {
namespace {

using pruebas::hijo;
using pruebas::Persona;

class PruebaFrmconfig : public ::testing::Test {
  protected:
    PruebaFrmconfig() : empresa(mundo.crearEmpresa("Alfa.qzt", "ana", "Ana2024")) {
        mundo.nucleo.ajustes.GrabarRegistro("ACTIVE", empresa);
    }

    // The window from its opening to its end; `paso` closes it.
    void abrir(std::function<void(QDialog&)> paso) {
        workflows::FormularioConfiguracion formulario(mundo.flujos);
        formulario.DatosIniciales();
        persona.ante(std::move(paso));
        frmconfig(formulario, mundo.nucleo.entorno, nullptr).exec();
    }
    static void pulsar(QDialog& dialogo, const char* nombre) {
        hijo<QAbstractButton>(dialogo, nombre).click();
    }
    static void escribir(QDialog& dialogo, const char* nombre, const char* texto) {
        auto& linea = hijo<QLineEdit>(dialogo, nombre);
        linea.setFocus();
        linea.selectAll();
        QTest::keyClicks(&linea, texto);
    }
    std::string config(const std::string& clave) {
        link::Enlace enlace(mundo.enlaces);
        enlace.AbrirEmpresa(empresa, "");
        const auto valor = enlace.Config(clave);
        enlace.CerrarEmpresa();
        return valor;
    }
    void config(const std::string& clave, const std::string& valor) {
        link::Enlace enlace(mundo.enlaces);
        enlace.AbrirEmpresa(empresa, "");
        enlace.Config(clave, valor);
        enlace.CerrarEmpresa();
    }

    std::unique_ptr<platform::SistemaArchivos> propios = platform::crearSistemaArchivos();
    pruebas::ArchivosDefectuosos archivos{*propios};
    pruebas::MundoFlujos mundo{{.archivos = &archivos}};
    std::string empresa;
    Persona persona;
};

TEST_F(PruebaFrmconfig, MuestraLoGuardadoBajoSusRotulos) {
    config("TVCARPETA", "Clientes");
    config("TVMINUTOS", "20");
    config("ADJUNTARCARPETAS0", "/datos/uno");
    config("ADJUNTARCARPETAS1", "/datos/dos");
    mundo.nucleo.ajustes.GrabarRegistro("Visualiza datos en", "3", "BACKUP");
    abrir([](QDialog& dialogo) {
        EXPECT_EQ(hijo<QLabel>(dialogo, "lbemrpesa").text(), "Alfa.qzt");
        EXPECT_TRUE(hijo<QCheckBox>(dialogo, "TarvolineActivar").isChecked());
        EXPECT_EQ(hijo<QLineEdit>(dialogo, "TarvolineUser").text(), "ana");
        EXPECT_EQ(hijo<QLineEdit>(dialogo, "TarvolinePassword").text(), "Ana2024");
        EXPECT_EQ(hijo<QLineEdit>(dialogo, "TarvolinePassword").echoMode(), QLineEdit::Password);
        EXPECT_EQ(hijo<QLineEdit>(dialogo, "TarvolineCarpeta").text(), "Clientes");
        EXPECT_EQ(hijo<QComboBox>(dialogo, "TarvolineMinutos").currentText(), "20");
        EXPECT_EQ(hijo<QComboBox>(dialogo, "TarvolineMinutos").count(), 61);
        EXPECT_EQ(hijo<QComboBox>(dialogo, "datosen").currentText(), "Gigas (GB)");
        EXPECT_EQ(hijo<QListWidget>(dialogo, "List1").count(), 2);
        const std::pair<int, const char*> rotulos[] = {{18, "<1353>"}, {19, "<310>: "}, {20, "<1354>"},
                                                       {16, "<2255>"}, {2, "<2256>"},   {1, "<2238>"},
                                                       {0, "<2254>"},  {17, "<1032>"}};
        for (const auto& [indice, texto] : rotulos) {
            EXPECT_EQ(hijo<QLabel>(dialogo, QString("Label1(%1)").arg(indice)).text(), texto);
        }
        dialogo.close();
    });
}

TEST_F(PruebaFrmconfig, LoEscritoSeGrabaConAceptarYSePierdeConSalir) {
    abrir([](QDialog& dialogo) {
        escribir(dialogo, "TarvolineUser", "luis");
        pulsar(dialogo, "INCLUYEIMAGENES");
        pulsar(dialogo, "Command2(1)");
    });
    EXPECT_EQ(config("TVUSER"), "ana");
    EXPECT_EQ(mundo.nucleo.almacen.Leer("IncluirImagenesTarvoline", "BACKUP"), "1")
        << "saved at the click, however the window ends";
    EXPECT_TRUE(mundo.nucleo.estado.gRefrescarEspacio);

    abrir([](QDialog& dialogo) {
        escribir(dialogo, "TarvolineUser", "luis");
        escribir(dialogo, "TarvolinePassword", "Luis2024");
        escribir(dialogo, "TarvolineCarpeta", "Nueva");
        hijo<QComboBox>(dialogo, "TarvolineMinutos").setCurrentIndex(3);
        hijo<QComboBox>(dialogo, "datosen").setCurrentIndex(1);
        pulsar(dialogo, "Command2(0)");
    });
    EXPECT_EQ(config("TVUSER"), "luis");
    EXPECT_EQ(config("TVPASSWORD"), "Luis2024");
    EXPECT_EQ(config("TVCARPETA"), "Nueva");
    EXPECT_EQ(config("TVMINUTOS"), "30");
    EXPECT_EQ(config("TarvolineMinutos"), "31");
    EXPECT_EQ(config("Borrador"), "1");
    EXPECT_EQ(mundo.nucleo.estado.gUnidadTamano, 1);
}

TEST_F(PruebaFrmconfig, SinCamposEditadosLaMarcaSeEscribeEnNingunSitio) {
    abrir([](QDialog& dialogo) {
        pulsar(dialogo, "TarvolineActivar");
        pulsar(dialogo, "Command1");
        hijo<QComboBox>(dialogo, "datosen").setCurrentIndex(0);
        pulsar(dialogo, "Command2(0)");
    });
    EXPECT_EQ(config("Borrador"), "1");
    EXPECT_EQ(mundo.nucleo.almacen.Leer("Visualiza datos en", "BACKUP"), "");
}

TEST_F(PruebaFrmconfig, LaCarpetaNoTomaSeparadoresNiEscritosNiPegados) {
    abrir([](QDialog& dialogo) {
        auto& carpeta = hijo<QLineEdit>(dialogo, "TarvolineCarpeta");
        QTest::keyClicks(&carpeta, "/\\");
        EXPECT_EQ(carpeta.text(), "");
        pulsar(dialogo, "Command2(0)");
    });
    abrir([](QDialog& dialogo) {
        auto& carpeta = hijo<QLineEdit>(dialogo, "TarvolineCarpeta");
        QTest::keyClicks(&carpeta, "a/b\\c");
        carpeta.insert("/d\\e");
        carpeta.setCursorPosition(1);
        QTest::keyClicks(&carpeta, "/x");
        pulsar(dialogo, "Command2(0)");
    });
    EXPECT_EQ(config("TVCARPETA"), "axbcde");
}

TEST_F(PruebaFrmconfig, EnterPasaAlSiguienteCampoYNoCierra) {
    abrir([](QDialog& dialogo) {
        const char* camino[] = {"TarvolineUser", "TarvolinePassword", "TarvolineCarpeta", "Command2(0)"};
        hijo(dialogo, camino[0]).setFocus();
        for (int i = 0; i < 3; ++i) {
            ASSERT_TRUE(hijo(dialogo, camino[i]).hasFocus()) << camino[i];
            QTest::keyClick(&hijo(dialogo, camino[i]), i == 1 ? Qt::Key_Enter : Qt::Key_Return);
            EXPECT_TRUE(dialogo.isVisible());
        }
        EXPECT_TRUE(hijo(dialogo, camino[3]).hasFocus());
        QTest::keyClick(&dialogo, Qt::Key_Escape);
    });
}

TEST_F(PruebaFrmconfig, ElOjoMuestraYOcultaLaClave) {
    abrir([](QDialog& dialogo) {
        auto& clave = hijo<QLineEdit>(dialogo, "TarvolinePassword");
        auto& ojo = hijo<QAction>(dialogo, "Command3");
        const auto nombre = ojo.toolTip();
        ojo.trigger();
        EXPECT_EQ(clave.echoMode(), QLineEdit::Normal);
        EXPECT_NE(ojo.toolTip(), nombre);
        ojo.trigger();
        EXPECT_EQ(clave.echoMode(), QLineEdit::Password);
        dialogo.close();
    });
}

TEST_F(PruebaFrmconfig, LasCarpetasSeAnadenYSeQuitan) {
    for (int i = 0; i < 3; ++i) {
        config("ADJUNTARCARPETAS" + std::to_string(i), "/datos/" + std::to_string(i));
    }
    auto& guion = mundo.nucleo.guion;
    guion.elegirCarpeta("/datos/nueva");
    guion.contestarNo("/datos/2");
    for (const char* quitada : {"/datos/nueva", "/datos/2", "/datos/1"}) {
        guion.contestarSi(quitada);
    }
    abrir([](QDialog& dialogo) {
        auto& lista = hijo<QListWidget>(dialogo, "List1");
        EXPECT_FALSE(hijo(dialogo, "Toolbar1(78)").isEnabled()) << "nothing is chosen";
        pulsar(dialogo, "Toolbar1(0)");
        ASSERT_EQ(lista.count(), 4);
        EXPECT_EQ(lista.currentRow(), 3);
        lista.setCurrentRow(2);
        pulsar(dialogo, "Toolbar1(78)");
        EXPECT_EQ(lista.count(), 4);
        lista.setCurrentRow(3);
        for (int i = 0; i < 3; ++i) {
            pulsar(dialogo, "Toolbar1(78)");
        }
        EXPECT_EQ(lista.count(), 1);
        pulsar(dialogo, "Command2(0)");
    });
    EXPECT_EQ(config("ADJUNTARCARPETAS0"), "/datos/0");
    EXPECT_EQ(config("ADJUNTARCARPETAS1"), "");
    EXPECT_EQ(config("ADJUNTARCARPETAS2"), "/datos/2");
}

TEST_F(PruebaFrmconfig, UnaGrabacionFallidaSeDiceYLaVentanaSigueConLoEscrito) {
    abrir([this](QDialog& dialogo) {
        escribir(dialogo, "TarvolineUser", "luis");
        archivos.alEmpezar([](pruebas::Operacion operacion, const std::string&) {
            if (operacion == pruebas::Operacion::escribir) {
                throw std::runtime_error("no disk");
            }
        });
        pulsar(dialogo, "Command2(0)");
        ASSERT_EQ(mundo.nucleo.guion.cajas().size(), 1U);
        EXPECT_EQ(mundo.nucleo.guion.ultimo().icono, core::Icono::exclamacion);
        ASSERT_TRUE(dialogo.isVisible());
        EXPECT_EQ(hijo<QLineEdit>(dialogo, "TarvolineUser").text(), "luis");
        archivos.alEmpezar({});
        pulsar(dialogo, "Command2(0)");
    });
    EXPECT_EQ(config("TVUSER"), "luis");
}

TEST_F(PruebaFrmconfig, ElFinDelProgramaCierraLaVentanaYSigueSuCamino) {
    mundo.nucleo.guion.cerrarVentanaEnTurno(mundo.nucleo.guion.turnos + 1);
    EXPECT_THROW(abrir([](QDialog& dialogo) { pulsar(dialogo, "Command2(1)"); }), core::FinDePrograma);
}

}  // namespace
}  // namespace tarvoline::ui
