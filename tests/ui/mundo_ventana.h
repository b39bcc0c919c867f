// The program with its window, lived through from its start to its end: the real window and workflows, the
// real service in a process of its own, settings in a home of its own; only boxes and dialogs follow a
// script.
//
//   MundoVentana mundo;
//   Vida vida(mundo);
//   vida.guion.rellenar({"ana", "Ana2024"});         // the login dialog of the first start
//   vida.vivir([&] { vida.pulsar("Restaurar"); });   // once the window has come to rest
#pragma once

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "apoyo/nucleo_prueba.h"
#include "apoyo/servicio_proceso.h"
#include "core/inicio.h"
#include "core/texto.h"
#include "ui/copia_seg.h"
#include "ui/texto_qt.h"
#include "workflows/lista.h"
#include "workflows/listados.h"
#include "workflows/montaje.h"
#include "workflows/transferencia.h"
#include "workflows/ventana_principal.h"

namespace tarvoline::pruebas {

// A home folder whose settings lead to a service with the users "ana" and "luis" of one account.
class MundoVentana {
  public:
    MundoVentana() {
        for (const char* variable :
             {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CONFIG_DIRS", "TMPDIR"}) {
            const auto ruta = carpeta.ruta(std::string("casa/") + variable);
            std::filesystem::create_directories(ruta);
            variables_.poner(variable, ruta);
        }
        std::filesystem::create_directories(datos());
        servicio.alta("ana", "Ana2024", "C0001");
        servicio.alta("luis", "Luis2024", "C0001");
    }

    std::string datos(const std::string& nombre = {}) const { return carpeta.ruta("datos/" + nombre); }

    ServicioProceso servicio;  // before the variables: its own folder is none of the home's
    CarpetaPrueba carpeta;

  private:
    VariablesProceso variables_;
};

class VentanasCalladas : public workflows::Ventanas {
  public:
    void frmconfig(workflows::FormularioConfiguracion&) override { ++configuraciones; }
    void Form1(workflows::Terminos& terminos) override {
        ++terminosMostrados;
        if (alMostrarTerminos) {
            alMostrarTerminos(terminos);
        }
    }
    int configuraciones = 0;
    int terminosMostrados = 0;
    std::function<void(workflows::Terminos&)> alMostrarTerminos;
};

// One run of the program.
class Vida {
    class Caminos : public workflows::CaminosFlujos {
      public:
        Caminos(workflows::Montaje& montaje, Vida& vida) : CaminosFlujos(montaje), vida_(vida) {}
        void CrearVentana() override {
            vida_.principal.cargar();
            vida_.ventana =
                std::make_unique<ui::CopiaSeg>(vida_.principal, [this] { vida_.finPedido_ = true; });
        }
        void MostrarVentana() override { vida_.mostrar(); }
        void Reiniciar(std::string_view ordenes) override { vida_.reinicios.emplace_back(ordenes); }

      private:
        Vida& vida_;
    };

  public:
    explicit Vida(MundoVentana& mundo) : montaje(guion, registro), principal(montaje.flujos(), ventanas) {
        auto& ajustes = montaje.entorno().ajustes;
        ajustes.GrabarRegistro("Directory", std::string(TARVOLINE_PROGRAMA) + "/");
        ajustes.GrabarRegistro("DATOS_DIR", mundo.datos());
        ajustes.GrabarRegistro("IP", mundo.servicio.anfitrion(), "NETBACKUP");
        // A turn gives the window its events, and ends the program once it was closed.
        guion.enCadaTurno([this] {
            QCoreApplication::processEvents();
            if (enTurno) {
                enTurno();
            }
            if (finPedido_) {
                throw core::FinDePrograma{};
            }
        });
    }

    // The whole start. `persona` acts when the window has come to rest for the first time; then it is closed.
    int vivir(std::function<void()> persona, const std::string& ordenes = "2") {
        persona_ = std::move(persona);
        Caminos caminos(montaje, *this);
        core::Inicio inicio(montaje.entorno(), caminos, montaje.instancia(), {});
        return inicio.Main(ordenes);
    }
    // The same, logging in as ana at the first listing.
    int vivirComoAna(std::function<void()> persona) {
        guion.rellenar({"ana", "Ana2024"});
        return vivir(std::move(persona));
    }

    template <typename Control = QWidget>
    Control& control(const char* nombre) {
        auto* hallado = ventana->findChild<Control*>(QString::fromUtf8(nombre));
        if (hallado == nullptr) {
            throw std::runtime_error(std::string("no control ") + nombre);
        }
        return *hallado;
    }
    // A click on a control, near its left edge: a round mark answers only where it and its caption are.
    void pulsar(const char* nombre) {
        auto& pulsado = control(nombre);
        const int medio = pulsado.height() / 2;
        QTest::mouseClick(&pulsado, Qt::LeftButton, {}, {medio, medio});
    }
    void pulsarBarra(int numero) { pulsar(("Toolbar2(" + std::to_string(numero) + ")").c_str()); }
    QTableView& fx1() { return control<QTableView>("fx1"); }
    // A click on a row of the grid, counted from 1.
    void pulsarFila(int fila, Qt::KeyboardModifiers con = {}) {
        const auto lugar = fx1().model()->index(fila - 1, workflows::columna_rejilla::descripcion);
        QTest::mouseClick(fx1().viewport(), Qt::LeftButton, con, fx1().visualRect(lugar).center());
    }
    // What the grid shows as names, from its first row on.
    std::vector<std::string> nombres() {
        std::vector<std::string> filas;
        const auto& modelo = *fx1().model();
        for (int i = 0; i < modelo.rowCount(); ++i) {
            filas.push_back(
                ui::deQt(modelo.index(i, workflows::columna_rejilla::descripcion).data().toString()));
        }
        return filas;
    }
    std::string subirPersonal(const std::string& ruta) {
        return montaje.flujos().transferencia().SubirArchivo(ruta, "PERSONAL", false, 1);
    }
    std::string clave(std::string_view nombre) {
        return core::Recortar(montaje.entorno().almacen.Leer(nombre, "NETBACKUP", "", "VELDORIX"));
    }
    const std::string& texto(int numero) { return montaje.entorno().texto(numero); }

    EscritorioGuion guion;
    RegistroGuardado registro;
    workflows::Montaje montaje;
    VentanasCalladas ventanas;
    workflows::VentanaPrincipal principal;
    std::unique_ptr<ui::CopiaSeg> ventana;
    std::function<void()> enTurno;  // runs in each turn of a workflow, after the window had its events
    std::vector<std::string> reinicios;

  private:
    void mostrar() {
        // The first time that the event loop would sleep, everything that the start began has ended.
        auto* motor = QAbstractEventDispatcher::instance();
        const auto enlace = QObject::connect(motor, &QAbstractEventDispatcher::aboutToBlock, motor, [this] {
            if (auto persona = std::exchange(persona_, nullptr)) {
                QTimer::singleShot(0, ventana.get(), [this, persona] {
                    try {
                        persona();
                    } catch (const std::exception& error) {
                        ADD_FAILURE() << error.what();  // it must not reach the event loop
                    }
                    ventana->close();
                });
            }
        });
        try {
            ventana->mostrarModal();
        } catch (...) {
            QObject::disconnect(enlace);
            throw;
        }
        QObject::disconnect(enlace);
    }

    std::function<void()> persona_;
    bool finPedido_ = false;
};

}  // namespace tarvoline::pruebas
