// The main window against the real service: lists, choices, keys, locks and what a restart remembers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QHeaderView>
#include <QMenu>
#include <QRadioButton>

#include "apoyo/servicio_guion.h"
#include "ui/mundo_ventana.h"
#include "workflows/panel.h"

namespace tarvoline::ui {
namespace {

using pruebas::MundoVentana;
using pruebas::Vida;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr int textoIdentificarse = 2241;
constexpr int textoBorrar = 2239;
constexpr int textoHistoricoSinBorrado = 269;

class PruebaCopiaSeg : public ::testing::Test {
  protected:
    // Personal files of ana's, of growing size: a.bin, b.bin, ...
    void subirPersonales(Vida& vida, int cuantos) {
        for (int i = 0; i < cuantos; ++i) {
            const auto nombre = std::string(1, static_cast<char>('a' + i)) + ".bin";
            const auto tamano = 1000 * static_cast<std::size_t>((i * 3) % cuantos + 1);
            const auto ruta = mundo.carpeta.escribir("subir/" + nombre, pruebas::contenidoDePrueba(tamano));
            ASSERT_EQ(vida.subirPersonal(ruta), "");
        }
    }
    // What the service holds, as another program would see it.
    std::vector<std::string> enElServicio(Vida& vida) {
        auto cliente = vida.montaje.flujos().nuevoCliente();
        return service::leerNombres(cliente.ListadoArchivos(vida.montaje.flujos().enVigor(), "PERSONAL"));
    }
    std::vector<std::string> historia(Vida& vida) {
        vida.pulsar("Option1(2)");
        return vida.nombres();
    }

    MundoVentana mundo;
};

TEST_F(PruebaCopiaSeg, ElPrimerInicioPideLaEntradaYMuestraLaLista) {
    Vida vida(mundo);
    vida.vivirComoAna([&] {
        EXPECT_THAT(deQt(vida.ventana->windowTitle()), HasSubstr("ana"));
        EXPECT_TRUE(vida.control<QRadioButton>("Option1(0)").isChecked());
        EXPECT_THAT(vida.nombres(), IsEmpty());
        subirPersonales(vida, 2);
        vida.pulsar("Option1(1)");
        EXPECT_THAT(vida.nombres(), ElementsAre("a.bin", "b.bin"));
        EXPECT_EQ(vida.control<QComboBox>("Toolbar2(-3)").currentText(), "Archivos Personales");
        // Keys and sizes are there but not to be seen; the size is read from its end.
        const auto& fx1 = vida.fx1();
        for (const int oculta : {0, 1, 2, 6, 7, 8}) {
            EXPECT_TRUE(fx1.isColumnHidden(oculta)) << oculta;
        }
        EXPECT_NEAR(fx1.columnWidth(3), fx1.viewport()->width() / 2, 2);
        const auto tamano = fx1.model()->index(0, workflows::columna_rejilla::tamano);
        EXPECT_FALSE(tamano.data().toString().isEmpty());
        EXPECT_TRUE(tamano.data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
    });
}

TEST_F(PruebaCopiaSeg, SinEntradaSoloRespondenLosBotonesQueNoLaNecesitan) {
    Vida vida(mundo);
    vida.guion.cancelarDatos();
    vida.vivir([&] {
        EXPECT_THAT(deQt(vida.ventana->windowTitle()), HasSubstr(vida.texto(textoIdentificarse)));
        vida.pulsarBarra(workflows::boton::configuracion);
        EXPECT_EQ(vida.guion.ultimo().texto, vida.texto(textoIdentificarse));
        EXPECT_EQ(vida.ventanas.configuraciones, 0);
        vida.guion.rellenar({"ana", "Ana2024"});
        vida.pulsarBarra(workflows::boton::cambiarUsuario);
        EXPECT_THAT(deQt(vida.ventana->windowTitle()), HasSubstr("ana"));
    });
}

TEST_F(PruebaCopiaSeg, SeBorraLoElegidoHaciaAbajoYHaciaArriba) {
    Vida vida(mundo);
    vida.vivirComoAna([&] {
        subirPersonales(vida, 7);
        vida.pulsar("Option1(1)");
        vida.pulsarFila(2);
        vida.pulsarFila(3, Qt::ShiftModifier);
        QTest::keyClick(&vida.fx1(), Qt::Key_Delete);
        EXPECT_THAT(enElServicio(vida), ElementsAre("a.bin", "d.bin", "e.bin", "f.bin", "g.bin"));
        EXPECT_EQ(vida.nombres(), enElServicio(vida));

        // Upwards the same files go; their rows stay on show until the next listing.
        vida.pulsarFila(4);
        vida.pulsarFila(3, Qt::ShiftModifier);
        EXPECT_EQ(vida.montaje.vista().fx1.Row, 4);
        EXPECT_EQ(vida.montaje.vista().fx1.RowSel, 3);
        QTest::keyClick(&vida.fx1(), Qt::Key_Delete);
        EXPECT_THAT(enElServicio(vida), ElementsAre("a.bin", "d.bin", "g.bin"));
        EXPECT_THAT(vida.nombres(), ElementsAre("a.bin", "d.bin", "e.bin", "f.bin", "g.bin"));
        QTest::keyClick(vida.ventana.get(), Qt::Key_F5);
        EXPECT_EQ(vida.nombres(), enElServicio(vida));

        // The button asks first, and reads the list again.
        vida.pulsarFila(3);
        vida.guion.contestarNo(vida.texto(textoBorrar));
        vida.pulsarBarra(workflows::boton::eliminar);
        EXPECT_EQ(enElServicio(vida).size(), 3U);
        vida.guion.contestarSi(vida.texto(textoBorrar));
        vida.pulsar("Eliminar");
        EXPECT_THAT(vida.nombres(), ElementsAre("a.bin", "d.bin"));

        EXPECT_THAT(historia(vida), ::testing::Contains(HasSubstr("b.bin, c.bin")));
        vida.pulsarBarra(workflows::boton::eliminar);
        EXPECT_EQ(vida.guion.ultimo().texto, vida.texto(textoHistoricoSinBorrado));
    });
}

TEST_F(PruebaCopiaSeg, UnaTeclaSujetaNoBorraDosVeces) {
    Vida vida(mundo);
    vida.vivirComoAna([&] {
        subirPersonales(vida, 3);
        vida.pulsar("Option1(1)");
        vida.pulsarFila(1);
        QKeyEvent primera(QEvent::KeyPress, Qt::Key_Delete, {});
        QKeyEvent repetida(QEvent::KeyPress, Qt::Key_Delete, {}, {}, true);
        QCoreApplication::sendEvent(&vida.fx1(), &primera);
        QCoreApplication::sendEvent(&vida.fx1(), &repetida);
        EXPECT_THAT(enElServicio(vida), ElementsAre("b.bin", "c.bin"));
    });
}

TEST_F(PruebaCopiaSeg, LoQueSePideMientrasSeMideValeParaLoElegidoEntonces) {
    Vida vida(mundo);
    vida.vivirComoAna([&] {
        subirPersonales(vida, 5);
        vida.enTurno = [&, hecho = false]() mutable {
            if (vida.montaje.flujos().listados().midiendoTamanos() && !std::exchange(hecho, true)) {
                vida.pulsarFila(1);
                vida.fx1().setFocus();
                // All of one turn: what comes behind the Delete finds the list closed.
                QTest::keyClick(&vida.fx1(), Qt::Key_Delete);
                QTest::keyClick(&vida.fx1(), Qt::Key_Down);
                vida.pulsarFila(4);
                vida.pulsar("Eliminar");
                QTest::keyClick(vida.ventana.get(), Qt::Key_F5);
            }
        };
        vida.pulsar("Option1(1)");
        EXPECT_THAT(enElServicio(vida), ElementsAre("b.bin", "c.bin", "d.bin", "e.bin"));
        EXPECT_THAT(vida.nombres(), ElementsAre("b.bin", "c.bin", "d.bin", "e.bin"));
        EXPECT_TRUE(vida.fx1().isEnabled());
        EXPECT_NE(vida.montaje.vista().lbtotalocupado, "") << "the sizes were taken up again";
    });
}

TEST_F(PruebaCopiaSeg, ConLaListaCerradaNoSeBusca) {
    Vida vida(mundo);
    vida.vivirComoAna([&] {
        subirPersonales(vida, 3);
        vida.pulsar("Option1(1)");
        vida.pulsarFila(1);
        QTest::keyClick(vida.ventana.get(), Qt::Key_F, Qt::ControlModifier);
        auto* linea = QApplication::focusWidget();
        ASSERT_NE(linea, nullptr);
        QTest::keyClicks(linea, "c.bin");
        QTest::keyClick(linea, Qt::Key_Return);
        EXPECT_EQ(vida.montaje.vista().fx1.Row, 3);
        vida.pulsarFila(1);
        vida.montaje.flujos().panel().Desabilitar_Formulario(false);
        QTest::keyClick(linea, Qt::Key_Return);
        QTest::keyClick(vida.ventana.get(), Qt::Key_F3);
        EXPECT_EQ(vida.montaje.vista().fx1.Row, 1);
        vida.montaje.flujos().panel().Desabilitar_Formulario(true);
    });
}

TEST_F(PruebaCopiaSeg, UnaCarpetaSeOrdenaAntesDeMedirse) {
    Vida vida(mundo);
    vida.vivirComoAna([&] {
        subirPersonales(vida, 3);
        vida.pulsar("Option1(1)");
        vida.montaje.flujos().lista().Ordenar_Click(0);
        vida.montaje.flujos().lista().Ordenar_Click(0);
        std::vector<std::string> alEmpezar;
        vida.enTurno = [&] {
            if (vida.montaje.flujos().listados().midiendoTamanos() && alEmpezar.empty()) {
                alEmpezar = vida.nombres();
            }
        };
        vida.montaje.flujos().listados().carpetas_Click(0);
        EXPECT_THAT(alEmpezar, ElementsAre("c.bin", "b.bin", "a.bin"));
        EXPECT_EQ(vida.nombres(), alEmpezar);
    });
}

TEST_F(PruebaCopiaSeg, SoloLasTeclasDeLaRejillaDejanLinea) {
    Vida vida(mundo);
    vida.vivirComoAna([&] {
        subirPersonales(vida, 2);
        vida.pulsar("Option1(1)");
        vida.fx1().setFocus();
        const auto lineas = [&] {
            auto cliente = vida.montaje.flujos().nuevoCliente();
            return std::string(cliente.LeerHistorico(vida.montaje.flujos().enVigor(), {})).size();
        };
        const auto antes = lineas();
        for (const auto tecla : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Menu, Qt::Key_CapsLock}) {
            QTest::keyClick(&vida.fx1(), tecla);
        }
        QTest::keyClick(&vida.fx1(), Qt::Key_C, Qt::ControlModifier);
        QTest::keyClick(&vida.fx1(), Qt::Key_Tab);
        EXPECT_EQ(lineas(), antes);
        vida.fx1().setFocus();
        QTest::keyClick(&vida.fx1(), Qt::Key_Down);
        EXPECT_EQ(vida.montaje.vista().fx1.Row, 1);
        QTest::keyClick(&vida.fx1(),
                        Qt::Key_Period);  // its number in the toolkit is that of Delete elsewhere
        EXPECT_GT(lineas(), antes);
        EXPECT_EQ(enElServicio(vida).size(), 2U);
    });
}

TEST_F(PruebaCopiaSeg, ElOrdenSobreviveAlReinicio) {
    {
        Vida vida(mundo);
        vida.vivirComoAna([&] {
            subirPersonales(vida, 5);  // sizes 1, 4, 2, 5, 3
            vida.pulsar("Option1(1)");
            vida.control<QAction>("Ordenar(0)").trigger();
            EXPECT_THAT(vida.nombres(), ElementsAre("a.bin", "b.bin", "c.bin", "d.bin", "e.bin"));
            vida.control<QAction>("Ordenar(2)").trigger();
            EXPECT_THAT(vida.nombres(), ElementsAre("d.bin", "b.bin", "e.bin", "c.bin", "a.bin"));
            const auto* cabecera = vida.fx1().horizontalHeader();
            EXPECT_TRUE(cabecera->isSortIndicatorShown());
            EXPECT_EQ(cabecera->sortIndicatorSection(), workflows::columna_rejilla::tamano);
            EXPECT_EQ(cabecera->sortIndicatorOrder(), Qt::DescendingOrder);
        });
    }
    Vida vida(mundo);
    vida.vivirComoAna([&] {
        vida.pulsar("Option1(1)");
        QTest::keyClick(vida.ventana.get(), Qt::Key_F5);
        auto& carpetas = vida.control<QComboBox>("carpetas");
        emit carpetas.activated(carpetas.currentIndex());  // a choice of the folder sorts as last time
        EXPECT_THAT(vida.nombres(), ElementsAre("d.bin", "b.bin", "e.bin", "c.bin", "a.bin"));
    });
}

TEST_F(PruebaCopiaSeg, ElServicioSeVaYVuelveAMediaLista) {
    Vida vida(mundo);
    vida.vivirComoAna([&] {
        subirPersonales(vida, 4);
        vida.enTurno = [&] {
            if (vida.montaje.vista().filaCambiada == 2) {
                mundo.servicio.matar();
            }
        };
        vida.montaje.vista().filaCambiada = 0;
        vida.guion.olvidar();
        vida.pulsar("Option1(1)");
        vida.enTurno = {};
        EXPECT_EQ(vida.guion.cajas().size(), 1U) << "one box for the line that is down, not one a row";
        EXPECT_EQ(vida.nombres().size(), 4U);
        EXPECT_TRUE(vida.fx1().isEnabled());
        EXPECT_FALSE(vida.control("Gauge1").isVisible());

        QTest::keyClick(vida.ventana.get(), Qt::Key_F5);
        EXPECT_THAT(vida.guion.ultimo().texto, HasSubstr("ERROR"));
        EXPECT_THAT(vida.nombres(), IsEmpty());
        EXPECT_EQ(vida.montaje.vista().lbtotalocupado, "") << "the sum of a list that is not there";
        mundo.servicio.arrancar();
        QTest::keyClick(vida.ventana.get(), Qt::Key_F5);
        EXPECT_EQ(vida.nombres().size(), 4U);
    });
}

TEST_F(PruebaCopiaSeg, LosTerminosSinAceptarCierranTodoMenosSuBoton) {
    Vida vida(mundo);
    vida.montaje.entorno().ajustes.GrabarRegistro("Terminos y condiciones", "1");
    vida.vivirComoAna([&] {
        EXPECT_EQ(vida.ventanas.terminosMostrados, 1);
        for (const char* cerrado :
             {"fx1", "carpetas", "Toolbar2(-3)", "Option1(0)", "Eliminar", "Imgcapacidad"}) {
            EXPECT_FALSE(vida.control(cerrado).isEnabled()) << cerrado;
        }
        EXPECT_TRUE(vida.control("Toolbar2").isEnabled());
        vida.ventanas.alMostrarTerminos = [&](workflows::Terminos&) {
            vida.montaje.entorno().ajustes.GrabarRegistro("Terminos y condiciones", "0");
        };
        vida.pulsarBarra(workflows::boton::terminos);
        EXPECT_TRUE(vida.fx1().isEnabled());
        EXPECT_TRUE(vida.control("Eliminar").isEnabled());
    });
}

}  // namespace
}  // namespace tarvoline::ui
