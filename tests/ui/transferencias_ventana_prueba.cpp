// Transfers from the main window, against the real service: stopped, locked, closed in the middle, restored.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>

#include "apoyo/servicio_guion.h"
#include "data/cabecera_empresa.h"
#include "data/crear_empresa.h"
#include "platform/acceso_inicio.h"
#include "tarvoline/contexto.h"
#include "ui/mundo_ventana.h"

namespace tarvoline::ui {
namespace {

using pruebas::MundoVentana;
using pruebas::Vida;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr int textoNoCompletado = 1227;

class PruebaTransferencias : public ::testing::Test {
  protected:
    std::string grande() { return mundo.carpeta.escribir("subir/grande.bin", contenido); }
    std::vector<std::string> personales(Vida& vida) {
        auto cliente = vida.montaje.flujos().nuevoCliente();
        return service::leerNombres(cliente.ListadoArchivos(vida.montaje.flujos().enVigor(), "PERSONAL"));
    }
    // Runs `paso` once, in the first turn after the second piece of an upload.
    void enPlenaSubida(Vida& vida, std::function<void()> paso) {
        vida.enTurno = [&vida, paso = std::move(paso)]() mutable {
            const auto& vista = vida.montaje.vista();
            if (vista.transferencia.subida && vista.transferencia.piezas >= 2 && paso) {
                std::exchange(paso, nullptr)();
            }
        };
    }
    // A company in the data directory, with one table.
    std::string crearEmpresa(Vida& vida, const std::string& nombre) {
        auto& datos = vida.montaje.flujos().enlaces().datos();
        const auto ruta = data::CrearEmpresaArchivos(datos, mundo.datos(nombre));
        const auto numero = data::NumeroEmpresa(vida.montaje.entorno().archivos, ruta);
        mundo.carpeta.escribir("datos/PLANC" + numero + ".QZD", std::string(70000, 'p'));
        return ruta;
    }
    std::string tabla(const std::string& numero) {
        return mundo.carpeta.leer("datos/PLANC" + numero + ".QZD");
    }

    // A life whose window is closed in mid-upload.
    void cerrarAMedias() {
        Vida vida(mundo);
        const int codigo = vida.vivirComoAna([&] {
            enPlenaSubida(vida, [&] {
                EXPECT_TRUE(vida.control("ImgStop").isVisible()) << "whatever control began it";
                vida.ventana->close();
            });
            vida.guion.elegirArchivo(grande());
            const auto cajas = vida.guion.cajas().size();
            vida.pulsar("Subir");
            EXPECT_FALSE(vida.ventana->isVisible());
            EXPECT_EQ(vida.guion.cajas().size(), cajas) << "neither a question nor a word";
        });
        EXPECT_EQ(codigo, 0);
        EXPECT_THAT(vida.clave("Active"), HasSubstr("grande.bin"));
        EXPECT_NE(vida.clave("Offset"), "1");
    }

    MundoVentana mundo;
    const std::string contenido = pruebas::contenidoDePrueba(3'000'000);
};

TEST_F(PruebaTransferencias, ParadaAMediasNoDejaNadaYDevuelveElMando) {
    Vida vida(mundo);
    vida.vivirComoAna([&] {
        vida.pulsar("Option1(1)");
        bool parada = false;
        enPlenaSubida(vida, [&] {
            for (const char* cerrado : {"fx1", "carpetas", "Toolbar2", "Toolbar2(134)", "Subir"}) {
                EXPECT_FALSE(vida.control(cerrado).isEnabled()) << cerrado;
            }
            EXPECT_FALSE(vida.control<QAction>("Toolbar2(134)").isEnabled()) << "its shortcut too";
            EXPECT_TRUE(vida.control("Imgproceso(1)").isVisible());
            EXPECT_FALSE(vida.control("Imgproceso(2)").isVisible());
            EXPECT_EQ(vida.control<QLabel>("NombreArchivo").text(), "grande.bin");
            EXPECT_TRUE(vida.control("Gauge1").isVisible());
            ASSERT_TRUE(vida.control("ImgStop").isVisible() && vida.control("ImgStop").isEnabled());
            vida.pulsar("ImgStop");
            parada = true;
        });
        vida.fx1().setFocus();
        vida.guion.elegirArchivo(grande());
        vida.pulsarBarra(workflows::boton::subirPersonal);
        EXPECT_TRUE(parada);
        EXPECT_THAT(personales(vida), IsEmpty());
        EXPECT_THAT(vida.clave("Active"), IsEmpty());
        for (const char* abierto : {"fx1", "carpetas", "Toolbar2", "Subir"}) {
            EXPECT_TRUE(vida.control(abierto).isEnabled()) << abierto;
        }
        for (const char* oculto : {"ImgStop", "Imgproceso(1)", "Gauge1"}) {
            EXPECT_FALSE(vida.control(oculto).isVisible()) << oculto;
        }
        EXPECT_EQ(vida.ventana->focusWidget(), &vida.fx1()) << "the keyboard comes back to the list";

        // The stop of before does not stop the next one.
        vida.guion.elegirArchivo(grande());
        vida.pulsar("Subir");
        EXPECT_THAT(vida.nombres(), Contains("grande.bin"));
        EXPECT_EQ(vida.clave("Active"), "");
    });
}

TEST_F(PruebaTransferencias, CerrarAMediasEsComoUnCorteYLaSubidaSigueAlVolver) {
    cerrarAMedias();
    Vida vida(mundo);
    vida.guion.contestarSi();  // go on with it, and as the user whose upload it is
    vida.vivir(
        [&] {
            vida.pulsar("Option1(1)");
            EXPECT_THAT(vida.nombres(), Contains("grande.bin"));
            EXPECT_EQ(vida.montaje.vista().fx1.celda(1, workflows::columna_rejilla::ordenTamano),
                      std::to_string(contenido.size()));
            EXPECT_EQ(vida.clave("Active"), "");
        },
        "");
}

TEST_F(PruebaTransferencias, AlVolverSePuedeDejarLaSubidaAMedias) {
    cerrarAMedias();
    Vida vida(mundo);
    vida.guion.contestarNo();
    const int codigo = vida.vivir([] { ADD_FAILURE() << "No ends the run"; }, "");
    EXPECT_EQ(codigo, 0);
    EXPECT_EQ(vida.ventana, nullptr);
    for (const char* nombre : {"Active", "Offset", "Carpeta", "User", "Password"}) {
        EXPECT_EQ(vida.clave(nombre), "") << nombre;
    }
}

TEST_F(PruebaTransferencias, UnaEmpresaSubeYSeRestauraDeLasDosManeras) {
    Vida vida(mundo);
    vida.vivirComoAna([&] {
        const auto ruta = crearEmpresa(vida, "Panadería.QZT");
        vida.guion.elegirArchivo(ruta);
        vida.pulsarBarra(workflows::boton::subirEmpresa);
        ASSERT_EQ(vida.nombres().size(), 1U);
        EXPECT_THAT(vida.nombres()[0], HasSubstr("PANADERÍA"));

        // Beside the old one.
        vida.pulsarFila(1);
        vida.guion.contestarSi();
        vida.guion.rellenar({}, 1);
        vida.pulsarBarra(workflows::boton::restaurar);
        EXPECT_TRUE(mundo.carpeta.hay("datos/Panadería~1.QZT"));
        EXPECT_EQ(tabla("02"), tabla("01"));

        // Over it, whatever it holds by now; first refused, which touches nothing.
        mundo.carpeta.escribir("datos/PLANC01.QZD", "otra cosa");
        vida.pulsarFila(1);
        vida.guion.contestarNo();
        vida.pulsarBarra(workflows::boton::restaurar);
        EXPECT_EQ(tabla("01"), "otra cosa");
        vida.guion.rellenar({}, 0);
        vida.pulsar("Restaurar");
        EXPECT_EQ(tabla("01"), tabla("02"));
        EXPECT_FALSE(mundo.carpeta.hay("datos/Panadería~2.QZT"));
        EXPECT_TRUE(vida.fx1().isEnabled());
    });
}

TEST_F(PruebaTransferencias, UnaBajadaParadaNoRestauraNada) {
    Vida vida(mundo);
    vida.vivirComoAna([&] {
        const auto ruta = crearEmpresa(vida, "Panadería.QZT");
        std::string azar(2'000'000, '\0');  // does not shrink when it is packed
        std::uint32_t semilla = 1;
        for (char& c : azar) {
            semilla = semilla * 1664525 + 1013904223;
            c = static_cast<char>(semilla >> 24);
        }
        mundo.carpeta.escribir("datos/PLANC01.QZD", azar);
        vida.guion.elegirArchivo(ruta);
        vida.pulsar("SubirEmpresa");
        vida.pulsarFila(1);
        vida.enTurno = [&] {
            if (vida.montaje.vista().panel == 2 && vida.montaje.vista().transferencia.piezas >= 2) {
                EXPECT_TRUE(vida.control("Imgproceso(2)").isVisible());
                QTest::keyClick(vida.ventana.get(), Qt::Key_Escape);
            }
        };
        vida.pulsar("Restaurar");
        EXPECT_EQ(vida.guion.ultimo().texto, vida.texto(textoNoCompletado));
        EXPECT_FALSE(mundo.carpeta.hay("datos/Panadería~1.QZT"));
        EXPECT_TRUE(vida.fx1().isEnabled());
    });
}

}  // namespace
}  // namespace tarvoline::ui
