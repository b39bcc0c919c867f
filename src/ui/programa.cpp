#include "ui/programa.h"

#include <QApplication>

#include "core/estado_ejecucion.h"
#include "core/registro_spdlog.h"
#include "platform/procesos.h"
#include "ui/apariencia.h"
#include "ui/copia_seg.h"
#include "ui/escritorio_qt.h"
#include "ui/form1.h"
#include "ui/frmconfig.h"
#include "workflows/montaje.h"

namespace tarvoline::ui {

namespace {

// The other windows, over the main one.
class VentanasQt : public workflows::Ventanas {
  public:
    explicit VentanasQt(core::Entorno& entorno) : entorno_(entorno) {}
    void ponerPadre(QWidget* padre) { padre_ = padre; }

    void frmconfig(workflows::FormularioConfiguracion& formulario) override {
        ui::frmconfig(formulario, entorno_, padre_).exec();
    }
    void Form1(workflows::Terminos& terminos) override { ui::Form1(terminos, entorno_, padre_).exec(); }

  private:
    core::Entorno& entorno_;
    QWidget* padre_ = nullptr;
};

class CaminosQt : public workflows::CaminosFlujos {
  public:
    CaminosQt(workflows::Montaje& montaje, EscritorioQt& escritorio)
        : CaminosFlujos(montaje),
          escritorio_(escritorio),
          ventanas_(montaje.entorno()),
          principal_(montaje.flujos(), ventanas_) {}

    void CrearVentana() override {
        principal_.cargar();
        ventana_ = std::make_unique<CopiaSeg>(principal_, [this] { escritorio_.pedirFin(); });
        escritorio_.ponerVentana(ventana_.get());
        ventanas_.ponerPadre(ventana_.get());
    }
    void MostrarVentana() override { ventana_->mostrarModal(); }

  private:
    EscritorioQt& escritorio_;
    VentanasQt ventanas_;
    workflows::VentanaPrincipal principal_;
    std::unique_ptr<CopiaSeg> ventana_;
};

}  // namespace

std::optional<int> ejecutar(int, char** argv, const std::string& ordenes) {
    if (!platform::hayPantalla()) {
        return std::nullopt;
    }
    int soloElNombre = 1;  // the rest of the command line is the program's own
    QApplication aplicacion(soloElNombre, argv);
    QApplication::setApplicationName("tarvoline");
    QApplication::setDesktopFileName("tarvoline");
    vestir(aplicacion);
    const auto archivos = platform::crearSistemaArchivos();
    const auto carpeta = core::carpetaRegistro();
    const auto registro = core::crearRegistro(*archivos, carpeta);
    EscritorioQt escritorio;
    workflows::Montaje montaje(escritorio, *registro);
    const bool espanol = core::idiomaEspanol(montaje.entorno());
    escritorio.ponerPalabras(Palabras(espanol));
    if (espanol) {
        hablarEspanol(aplicacion);
    }
    CaminosQt caminos(montaje, escritorio);
    core::Inicio inicio(montaje.entorno(), caminos, montaje.instancia(),
                        carpeta + "/" + core::nombreEstadoEjecucion);
    return inicio.Main(ordenes);
}

}  // namespace tarvoline::ui
