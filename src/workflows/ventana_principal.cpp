// The window's load and activation steps.
#include "workflows/ventana_principal.h"

#include "core/barra.h"
#include "core/despliegue.h"
#include "core/formato.h"
#include "core/texto.h"
#include "data/acceso_archivo.h"
#include "data/cabecera_empresa.h"
#include "data/utilidades.h"
#include "workflows/espacio.h"
#include "workflows/lista.h"
#include "workflows/listados.h"
#include "workflows/panel.h"
#include "workflows/sesion.h"
#include "workflows/terminos.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoClave = 310;
constexpr int textoClaveIncorrecta = 928;
constexpr int pasosActivacion = 18;

// A flag that is up for as long as a routine runs.
class Alzada {
  public:
    explicit Alzada(bool& bandera) : bandera_(bandera) { bandera_ = true; }
    ~Alzada() { bandera_ = false; }
    Alzada(const Alzada&) = delete;
    Alzada& operator=(const Alzada&) = delete;

  private:
    bool& bandera_;
};

}  // namespace

void VentanaPrincipal::traza(std::string_view paso, int numero) {
    flujos_.panel().Traza(std::string(paso) + " " + core::conCeros(numero, 2));
}

bool VentanaPrincipal::mostrandoErrores(const std::function<void()>& paso) {
    try {
        paso();
        return true;
    } catch (const std::exception& error) {
        entorno_.registro.error(error.what());
        avisar(error.what(), core::Icono::exclamacion);
        return false;
    }
}

void VentanaPrincipal::avisar(std::string texto, core::Icono icono) {
    entorno_.escritorio.Mensaje({std::move(texto), icono, std::string(tituloPrograma)});
}

void VentanaPrincipal::cargar() {
    estado().gModoComprobacion = core::Val(entorno_.almacen.Leer("MODOCOMPROBACION")) == 1;
    traza("Load", 1);
    using namespace core::despliegue;
    vista().rotulos.versionlb = std::to_string(versionMayor) + "." + std::to_string(versionMenor) + "." +
                                std::to_string(versionRevision);
    traza("Load", 2);
    if (estado().gEnReposo) {
        return;
    }
    core::ComprobarIdioma(entorno_);
    idiomaComprobado_ = true;
    ponerRotulosCarga();
    comprobarProteccion();
    traza("Load", 3);
    PrimeraCarga = true;
}

void VentanaPrincipal::ponerRotulosCarga() {
    auto& rotulos = vista().rotulos;
    vista().titulo = texto(1924);
    vista().avisar(core::Parte::titulo);
    rotulos.Label6 = texto(2146);
    rotulos.Label2 = texto(1925);
    rotulos.Option1 = {texto(1927), texto(1929), texto(2153), texto(1928)};
    rotulos.Label1 = texto(371);
    rotulos.Label3 = texto(964);
    rotulos.Label5 = texto(1064);
    vista().avisar(core::Parte::rotulos);
}

// The head of the active company, when there is one that can be read.
void VentanaPrincipal::comprobarProteccion() {
    std::string guardada;
    core::ignorandoErrores(entorno_, "protection of the active company", [&] {
        const auto ruta = entorno_.almacen.Leer("active");
        if (!ruta.empty()) {
            data::exigirEmpresa(flujos_.enlaces().datos(), ruta, [&](platform::Archivo& archivo) {
                guardada = data::DesenmascararClave(
                    data::CabeceraEmpresa::leer(archivo).ansi(data::cabecera::PASSWORD1));
            });
        }
    });
    if (core::Recortar(guardada).empty()) {
        return;
    }
    estado().gModoGauge = core::modo_gauge::pidiendoClave;
    const auto escrita = entorno_.almacen.Pedir(texto(textoClave)).value_or("");
    if (escrita == guardada) {
        return;
    }
    if (!escrita.empty()) {
        entorno_.escritorio.Mensaje({texto(textoClaveIncorrecta), core::Icono::parada, ""});
    }
    throw core::FinDePrograma{};
}

void VentanaPrincipal::activar() {
    if (activando_) {
        return;
    }
    const Alzada alzada(activando_);
    // A start that shows the window at once has skipped the check so far.
    if (!idiomaComprobado_) {
        core::ComprobarIdioma(entorno_);
        idiomaComprobado_ = true;
        ponerRotulosCarga();
    }
    traza("Active", 1);
    estado().gModoGauge = core::modo_gauge::ventanaPrincipal;
    traza("Active", 2);
    ponerRotulosActivacion();
    traza("Active", 4);
    medirYTitular();
    traza("Active", 8);
    if (estado().gInicio) {
        primeraActivacion();
    }
    traza("Active", 14);
    revisarTerminos();
    traza("Active", 15);
    if (PrimeraCarga) {
        PrimeraCarga = false;
        flujos_.listados().carpetas_Click(vista().carpetaElegida);
    }
    traza("Active", 16);
    estado().gInicio = false;
    ponerRotulosMenu();
    traza("Active", 17);
    if (flujos_.listados().faltanTamanos()) {
        flujos_.panel().entrada([this] { flujos_.listados().ActualizaTamanoFila(); });
    }
    traza("Active", pasosActivacion);
}

void VentanaPrincipal::ponerRotulosActivacion() {
    auto& rotulos = vista().rotulos;
    rotulos.Label2 = texto(2220);
    rotulos.Label1 = texto(371);
    rotulos.ayudaTamaño = texto(2237);
    rotulos.ayudaCapacidad = texto(2246);
    vista().avisar(core::Parte::rotulos);
    traza("Active", 3);
    ponerBarra();
}

void VentanaPrincipal::ponerRotulosMenu() {
    vista().rotulos.edicion = texto(1083);
    vista().rotulos.Ordenar = {texto(587), texto(17), texto(964)};
    vista().avisar(core::Parte::rotulos);
}

void VentanaPrincipal::ponerBarra() {
    vista().rotulos.botonesToolbar2.clear();
    for (const auto& numero :
         core::Partir("0,107,97,135,134,124,12,132,136,119,-1,-3,-1,79,65,94,111,113", ",")) {
        vista().rotulos.botonesToolbar2.push_back(core::ValEntero(numero));
    }
    vista().rotulos.ayudasToolbar2 = core::Partir(texto(2235), ",");
    vista().avisar(core::Parte::rotulos);
}

// Activations alternate between telling what is wrong with the account and keeping quiet, unless a window
// that closes raises the flag. Figures that could not be had do not keep the caption from its user.
void VentanaPrincipal::medirYTitular() {
    const bool silencioso = estado().gRefrescarEspacio;
    estado().gRefrescarEspacio = !silencioso;
    traza("Active", 5);
    flujos_.panel().entrada([&] { flujos_.espacio().Controlar_capacidad(silencioso); });
    traza("Active", 6);
    flujos_.panel().entrada([this] {
        vista().titulo = flujos_.sesion().titulo();
        vista().avisar(core::Parte::titulo);
    });
    traza("Active", 7);
}

void VentanaPrincipal::primeraActivacion() {
    traza("Active", 9);
    flujos_.panel().entrada([this] {
        flujos_.lista().ordenarAlLlenar(flujos_.lista().ordenGuardado());
        flujos_.listados().RefrescarVista();
    });
    traza("Active", 10);
    flujos_.panel().entrada([this] { flujos_.lista().aplicarOrdenGuardado(); });
    traza("Active", 11);
    if (Terminos(flujos_).pendientes()) {
        traza("Active", 12);
        mostrarTerminos();
        revisarTerminos();
    }
    estado().gInicio = false;
    traza("Active", 13);
}

void VentanaPrincipal::revisarTerminos() {
    const bool pendientes = Terminos(flujos_).pendientes();
    estado().gTerminosPendientes = pendientes ? 1 : 0;
    DeshabilitarFrm(!pendientes);
}

void VentanaPrincipal::mostrarTerminos() {
    Terminos terminos(flujos_);
    mostrandoErrores([&] {
        try {
            ventanas_.Form1(terminos);
        } catch (const core::ErrorIdioma& error) {
            avisar(error.what(), core::Icono::parada);
            throw core::FinDePrograma{1};  // nobody can accept what cannot be read
        }
    });
}

void VentanaPrincipal::DeshabilitarFrm(bool estado) {
    vista().habilitada = estado;
    vista().avisar(core::Parte::bloqueo);
}

}  // namespace tarvoline::workflows
