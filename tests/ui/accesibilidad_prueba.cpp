// Every window in both languages: each control says what it is, the keyboard reaches it, and its text fits.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QSet>

#include "ui/escritorio_qt.h"
#include "ui/etiqueta_corta.h"
#include "ui/form1.h"
#include "ui/frmconfig.h"
#include "ui/mundo_ventana.h"

namespace tarvoline::ui {
namespace {

using pruebas::MundoVentana;
using pruebas::Vida;

constexpr int textoSiempre = 1347;

std::string nombrar(const QObject* control) {
    return control == nullptr ? "?"
                              : deQt(control->objectName()) + " (" + control->metaObject()->className() + ")";
}

// Pieces that the toolkit puts into its own controls.
bool esInterno(const QObject* control) {
    return control != nullptr &&
           (control->objectName().startsWith("qt_") || control->inherits("QLineEditIconButton"));
}

bool debeLlamarse(const QAccessibleInterface& control) {
    switch (control.role()) {
        case QAccessible::PushButton:
        case QAccessible::ButtonMenu:
        case QAccessible::ButtonDropDown:
        case QAccessible::CheckBox:
        case QAccessible::RadioButton:
        case QAccessible::ComboBox:
        case QAccessible::EditableText:
        case QAccessible::ProgressBar:
        case QAccessible::SpinBox:
        case QAccessible::Slider:
        case QAccessible::Table:
        case QAccessible::List:
        case QAccessible::Graphic:
        case QAccessible::MenuItem:
        case QAccessible::Link:
            return true;
        default:
            return control.state().focusable;
    }
}

// Goes down the tree of what is shown and notes each control that a reader could not name.
void buscarSinNombre(QAccessibleInterface& control, std::vector<std::string>& sinNombre) {
    if (control.state().invisible || esInterno(control.object())) {
        return;
    }
    if (debeLlamarse(control) && control.text(QAccessible::Name).trimmed().isEmpty()) {
        sinNombre.push_back(nombrar(control.object()) + " role " + std::to_string(control.role()));
    }
    // The pictures inside a button are named by the button.
    const bool entera = control.tableInterface() != nullptr || control.role() == QAccessible::PushButton;
    for (int i = 0; !entera && i < control.childCount(); ++i) {
        if (auto* hijo = control.child(i)) {
            buscarSinNombre(*hijo, sinNombre);
        }
    }
}

std::vector<std::string> sinNombre(QWidget& ventana) {
    std::vector<std::string> faltan;
    buscarSinNombre(*QAccessible::queryAccessibleInterface(&ventana), faltan);
    return faltan;
}

// A control of a group in which one is chosen is reached by the arrows, from the chosen one.
bool sePuedeTabular(const QWidget& control) {
    const auto* opcion = qobject_cast<const QRadioButton*>(&control);
    return control.isVisible() && control.isEnabled() && (control.focusPolicy() & Qt::TabFocus) != 0 &&
           control.focusProxy() == nullptr && !esInterno(&control) &&
           (opcion == nullptr || opcion->isChecked());
}

// Goes around with Tab until a whole round finds nothing new, since what has the focus may enable others.
// What was never passed is returned.
std::vector<std::string> sinTabulador(QWidget& ventana) {
    QSet<const QWidget*> pasados;
    qsizetype antes = -1;
    for (auto* inicio = QApplication::focusWidget(); inicio != nullptr && pasados.size() != antes;) {
        antes = pasados.size();
        auto* foco = inicio;
        do {
            pasados.insert(foco);
            QTest::keyClick(foco, Qt::Key_Tab);
            foco = QApplication::focusWidget();
        } while (foco != nullptr && foco != inicio && pasados.size() < 1000);
    }
    std::vector<std::string> faltan;
    for (const auto* control : ventana.findChildren<QWidget*>()) {
        if (control->window() == &ventana && sePuedeTabular(*control) && !pasados.contains(control)) {
            faltan.push_back(nombrar(control));
        }
    }
    return faltan;
}

bool cabe(const QWidget& control) {
    const auto* etiqueta = qobject_cast<const QLabel*>(&control);
    if (etiqueta != nullptr && etiqueta->wordWrap()) {
        return control.height() >= etiqueta->heightForWidth(control.width());
    }
    return control.width() >= control.sizeHint().width() && control.height() >= control.sizeHint().height();
}

// Controls that show less than their text. Those that shorten it tell the whole in their tooltip.
std::vector<std::string> cortados(QWidget& ventana) {
    std::vector<std::string> cortos;
    const auto revisar = [&](const auto& controles) {
        for (const auto* control : controles) {
            const bool acorta = qobject_cast<const EtiquetaCorta*>(control) != nullptr;
            if (control->isVisible() && !acorta && !esInterno(control) && !cabe(*control)) {
                const auto [ancho, alto] =
                    std::pair(control->sizeHint().width(), control->sizeHint().height());
                cortos.push_back(nombrar(control) + " wants " + std::to_string(ancho) + "x" +
                                 std::to_string(alto) + ", has " + std::to_string(control->width()) + "x" +
                                 std::to_string(control->height()));
            }
            if (control->isVisible() &&
                !ventana.rect().contains(QRect(control->mapTo(&ventana, QPoint()), control->size()))) {
                cortos.push_back(nombrar(control) + " reaches out of the window");
            }
        }
    };
    revisar(ventana.findChildren<QLabel*>());
    revisar(ventana.findChildren<QAbstractButton*>());
    revisar(ventana.findChildren<QGroupBox*>());
    return cortos;
}

const std::vector<std::string> ninguno;

class Accesibilidad : public ::testing::TestWithParam<const char*> {
  protected:
    void SetUp() override {
        QAccessible::setActive(true);
        vida.montaje.entorno().almacen.Grabar("language", GetParam(), "", "");
    }
    void revisar(QWidget& ventana) {
        SCOPED_TRACE(deQt(ventana.windowTitle()));
        EXPECT_EQ(sinNombre(ventana), ninguno);
        EXPECT_EQ(cortados(ventana), ninguno);
        EXPECT_EQ(sinTabulador(ventana), ninguno);
    }
    void revisarAbierta(QWidget& ventana) {
        ventana.show();
        ventana.activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([&] {
            const auto* foco = QApplication::focusWidget();
            return foco != nullptr && foco->window() == &ventana;
        })) << "no control has the focus";
        revisar(ventana);
    }
    // Looks at the dialog that `abrir` waits on, and closes it.
    void enModal(const std::function<void()>& abrir) {
        bool visto = false;
        QTimer::singleShot(0, [&] {
            auto* dialogo = QApplication::activeModalWidget();
            ASSERT_NE(dialogo, nullptr);
            revisarAbierta(*dialogo);
            visto = true;
            dialogo->close();
        });
        abrir();
        EXPECT_TRUE(visto);
    }

    MundoVentana mundo;
    Vida vida{mundo};
};

TEST_P(Accesibilidad, la_ventana_principal) {
    vida.vivirComoAna([&] {
        vida.subirPersonal(mundo.carpeta.escribir("subir/Carta.bin", std::string(5000, 'x')));
        vida.pulsar("Option1(1)");
        vida.ventana->resize(1024, 700);
        vida.ventana->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(vida.ventana.get()));
        vida.fx1().setFocus();
        revisar(*vida.ventana);

        // The table reads its cells with their headings.
        auto* tabla = QAccessible::queryAccessibleInterface(&vida.fx1())->tableInterface();
        ASSERT_NE(tabla, nullptr);
        ASSERT_EQ(tabla->rowCount(), 1);
        const auto celda = tabla->cellAt(0, workflows::columna_rejilla::descripcion)->text(QAccessible::Name);
        EXPECT_TRUE(celda.endsWith(": Carta.bin")) << deQt(celda);
    });
}

TEST_P(Accesibilidad, las_otras_ventanas) {
    vida.vivirComoAna([&] {
        auto& flujos = vida.montaje.flujos();
        workflows::Terminos terminos(flujos);
        Form1 form1(terminos, flujos.entorno(), nullptr);
        revisarAbierta(form1);
        workflows::FormularioConfiguracion formulario(flujos);
        formulario.minutos = {vida.texto(textoSiempre), "10", "20"};
        formulario.List1 = {"/home/ana/Documentos"};
        frmconfig configuracion(formulario, flujos.entorno(), nullptr);
        revisarAbierta(configuracion);
    });
}

TEST_P(Accesibilidad, los_dialogos) {
    vida.vivirComoAna([&] {
        EscritorioQt escritorio;
        escritorio.ponerPalabras(Palabras(core::idiomaEspanol(vida.montaje.entorno())));
        escritorio.ponerVentana(vida.ventana.get());
        enModal([&] { escritorio.Preguntar({"¿Seguro?", core::Icono::pregunta, "Pregunta"}); });
        enModal([&] { escritorio.Pedir({"Petición", "Clave"}); });
        core::EntradaDatos datos{"Usuario", {}, 0};
        datos.campos.push_back({"Usuario", core::TipoCampo::texto, 20, "ana", {}});
        datos.campos.push_back({"Clave", core::TipoCampo::oculto, 20, "", {}});
        datos.campos.push_back({"Empresa", core::TipoCampo::eleccion, 0, "A", {"A", "B"}});
        datos.campos.push_back({"Guardar", core::TipoCampo::casilla, 0, "1", {}});
        enModal([&] { escritorio.PedirDatos(datos); });
        enModal([&] {
            escritorio.MostrarListado({"Espacio", "Usuario,Espacio", "hoy", "0,3", "ana\t1\r\n"});
        });
    });
}

INSTANTIATE_TEST_SUITE_P(Idiomas, Accesibilidad, ::testing::Values("español.qzi", "english.qzi"),
                         [](const auto& caso) { return caso.index == 0 ? "espanol" : "english"; });

}  // namespace
}  // namespace tarvoline::ui
