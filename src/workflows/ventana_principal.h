// The main window without its widgets: what each control may do and when, over the routines of this folder.
// The window paints core::Vista and calls in here; the rules of its controls live here alone.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "workflows/flujos.h"
#include "workflows/ventanas.h"

namespace tarvoline::workflows {

// Numbers of Toolbar2, and those that ButtonClick takes besides. They are the numbers of the images too.
namespace boton {
inline constexpr int nuevoUsuario = 0;
inline constexpr int configuracion = 12;
inline constexpr int detener = 21;          // ImgStop
inline constexpr int calcularEspacio = 35;  // on no toolbar
inline constexpr int soporte = 65;
inline constexpr int vaciarTemporal = 78;  // on no toolbar
inline constexpr int asistenciaRemota = 79;
inline constexpr int calidad = 94;
inline constexpr int online = 97;
inline constexpr int cambiarUsuario = 107;
inline constexpr int terminos = 111;
inline constexpr int manual = 113;
inline constexpr int eliminar = 119;
inline constexpr int subirPersonal = 124;
inline constexpr int restaurar = 132;
inline constexpr int subirEmpresa = 134;
inline constexpr int subirPendientes = 135;
inline constexpr int descargar = 136;
inline constexpr int separador = -1;
inline constexpr int selectorVista = -3;
}  // namespace boton

// Image buttons by index: Picture1(i) at rest, Picture2(i) under the pointer, and the button beside them.
enum class Imagen {
    cambiarUsuario,
    subirPendientes,
    subirEmpresa,
    subirPersonal,
    calcularEspacio,
    restaurar,
    descargar,
    espacioSeleccion,
    eliminar
};

class VentanaPrincipal : public Flujo {
  public:
    // `ventanas` is borrowed.
    VentanaPrincipal(Flujos& flujos, Ventanas& ventanas) : Flujo(flujos), ventanas_(ventanas) {}

    // The load step, at the window's creation. While Estado::gEnReposo is up it ends behind the version.
    // Throws core::FinDePrograma when the active company's protection check fails.
    void cargar();
    // The activation step: at the first show, and after one of the other windows has closed. Never inside
    // itself. What fails in it is shown, and the rest of it still runs.
    void activar();

    // A button of Toolbar2, by its number, behind its gates; or one of the numbers that stand on no button.
    // While a workflow runs, only the Stop passes. `argumento` counts for calcularEspacio alone.
    void ButtonClick(int numero, int argumento = 0);
    // An image button, and the plain button of the same command. They have no gates of their own.
    void Picture2_Click(Imagen imagen);
    // An entry of the view selector (core::nombresVista, from 0).
    void elegirVista(int entrada);
    void CalcularEspacio_Click() {}  // the button answers; the total is behind Imgcapacidad
    void Imgcapacidad_Click();
    void Label4_Click();  // the maker's page
    void Label6_Click();  // the terms

    // Every control but Toolbar2.
    void DeshabilitarFrm(bool estado);

    Flujos& flujos() { return flujos_; }

  private:
    void comprobarProteccion();
    void ponerRotulosCarga();
    void ponerRotulosActivacion();
    void ponerRotulosMenu();
    void ponerBarra();
    void medirYTitular();
    void primeraActivacion();
    void revisarTerminos();
    void mostrarTerminos();

    bool pasaPuertas(int numero);
    bool ejecutarOrden(int numero, int argumento);
    void ejecutarPagina(int numero);
    void trasOrden(int numero);
    void configurar();
    bool claveDeConfiguracionCorrecta();
    bool confirmarRestauracion();
    void eliminarSeleccion();
    void pedirSoporte();
    // The maker's request form: code, subject, three empty texts, account code, text.
    void SolicitudAsistencia(std::string_view codigo, std::string_view asunto, std::string_view texto1,
                             std::string_view texto2, std::string_view texto3, std::string_view cuenta,
                             std::string_view texto);
    // Runs a step outside an entry; a failure is shown and ends the step alone.
    bool mostrandoErrores(const std::function<void()>& paso);
    void avisar(std::string texto, core::Icono icono);
    void traza(std::string_view paso, int numero);

    Ventanas& ventanas_;
    bool PrimeraCarga = false;
    bool idiomaComprobado_ = false;
    bool activando_ = false;
};

}  // namespace tarvoline::workflows
