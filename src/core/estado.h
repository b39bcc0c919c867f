// The program-wide state: one object, owned by the entry and handed to whoever needs it. Variables bear the
// names that the whole program uses for them. Flags are bools here; numbers keep their coded values.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/idioma.h"
#include "core/resumen_ejecucion.h"

namespace tarvoline::core {

// The fixed error table, numbers 0..1000; entries that are not set are empty.
class TablaErrores {
  public:
    TablaErrores();
    const std::string& operator()(int numero) const { return textos_.at(static_cast<std::size_t>(numero)); }

  private:
    std::vector<std::string> textos_;
};

struct Estado {
    // Where things are.
    std::string gDatosDir;     // data directory of the product, with final separator
    std::string gDirectorio;   // program directory, with final separator
    std::string gUrlServicio;  // WSDL address of the backup service; fixed once the program has started
    std::string gProducto = "VELDORIX";  // or "VXCRM"

    // Texts.
    TablaErrores gErrores;
    Textos gTextos;
    std::array<std::string, 11> gTextosHistorico;
    std::array<std::string, 5> gUnidades{"B", "KB", "MB", "GB", "TB"};

    // The user in force for the next call of the service, and the one who logged in.
    std::string gUsuario, gPassword, gCarpeta, gCuenta;
    std::string gUsuarioSesion, gPasswordSesion, gCuentaSesion;
    bool gSesionValida = true;   // False: the toolbar answers only the three login-free buttons
    bool gUsuarioNuevo = false;  // a login has just changed the user

    // The company in force.
    std::string gEmpresaCRM;                     // two-digit code of the active VXCRM company
    std::vector<std::string> gAdjuntarCarpetas;  // extra folders; index 0 unused, counted from 1
    std::array<std::string, 11> gClavesEmpresa;  // company passwords that were typed in this run, 0..10
    std::array<std::string, 3> gClavesConfig;    // protection fields 1 and 2 of the company's head

    // What is going on.
    bool gInicio = false;  // until the first activation has ended, and during a new login
    bool gEnReposo = false;
    bool gRefrescando = false;   // the views are being refreshed: handlers do nothing
    bool gDesatendido = false;   // unattended road
    bool gDetener = false;       // the person asked to stop the transfer
    bool gInterrumpido = false;  // the last operation failed or was stopped
    bool gBorrandoSeleccion = false;
    bool gModoComprobacion = false;  // trace boxes
    int gTerminosPendientes = 0;
    int gModoGauge = 999;  // owner of the gauge: 999 none, 101 the main window (core/barra.h)

    // Grid and space.
    int gOrdenGrid = 0;     // "1", menu index, direction; 0 = never sorted
    int SentidoOrden = 0;   // 0 never sorted, 1 ascending, 2 descending
    int gUnidadTamano = 2;  // index into gUnidades
    int gDecimalesMoneda = 0;
    bool gCapacidadExcedida = false;
    bool gRefrescarEspacio = false;
    double gEspacioUsado = 0;   // MB
    double gEspacioCuenta = 0;  // MB, all users of the account
    double gCapacidad = 0;      // MB
    std::string gInforme;       // lines of the space report

    // Extra personal files that go up with a company, 1..999; nothing fills it at present.
    std::vector<std::string> gArchivosPersonales;

    // What the unattended run has done so far, for its status file (core/estado_ejecucion.h).
    ResumenEjecucion resumen;
};

// Phrases of the history lines, by index.
enum FraseHistorico {
    haSubidoEmpresa = 0,
    haBajadoEmpresa = 1,
    haSubidoArchivo = 2,
    haBajadoArchivo = 3,
    haBorradoArchivo = 4
};

}  // namespace tarvoline::core
