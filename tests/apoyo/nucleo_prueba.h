// A whole core for one test: fresh state, view, settings, folders, clock and log, a scripted desktop, and the
// Entorno over them. Everything lies in a folder of its own that goes with the object.
//
//   NucleoPrueba nucleo;
//   nucleo.entrarComo("maria", "secreta", "CUENTA1");
//   nucleo.guion.contestarSi();
//   workflows::Algo algo(nucleo.entorno, ...);
//
// The state is that of a program whose window has come up: VELDORIX, service folder "DATOS", gauge 101,
// nobody logged in, data directory `datos()`. Texts are marks: number 980 is "<980>"; 179 and 1250 begin with
// "ERROR" as they must. HOME and the XDG folders point into the test's folder while the object lives.
#pragma once

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "apoyo/ajustes_memoria.h"
#include "apoyo/carpeta_prueba.h"
#include "apoyo/escritorio_guion.h"
#include "apoyo/reloj_fijo.h"
#include "apoyo/variables_proceso.h"
#include "core/barra.h"
#include "core/entorno.h"
#include "core/idioma.h"

namespace tarvoline::pruebas {

// Keeps what was logged, each line with its level in front: "info ", "aviso ", "error ".
class RegistroGuardado : public core::Registro {
  public:
    std::vector<std::string> lineas;

    void info(std::string_view texto) override { lineas.push_back("info " + std::string(texto)); }
    void aviso(std::string_view texto) override { lineas.push_back("aviso " + std::string(texto)); }
    void error(std::string_view texto) override { lineas.push_back("error " + std::string(texto)); }
    bool dice(std::string_view trozo) const {
        return std::any_of(lineas.begin(), lineas.end(),
                           [&](const std::string& linea) { return linea.find(trozo) != std::string::npos; });
    }
};

struct OpcionesNucleo {
    // File layer to use in place of the real one (a failing one); borrowed.
    platform::SistemaArchivos* archivos = nullptr;
    // Settings in the file `nucleo.rutaAjustes()`, where other processes of the test see them, not in memory.
    bool ajustesEnArchivo = false;
};

class NucleoPrueba {
    // Built first, gone last: all members below live in it.
    CarpetaPrueba carpeta_;
    VariablesProceso variables_;
    std::unique_ptr<platform::SistemaArchivos> propios_;

  public:
    explicit NucleoPrueba(const OpcionesNucleo& opciones = {})
        : propios_(opciones.archivos == nullptr ? platform::crearSistemaArchivos() : nullptr),
          archivos(opciones.archivos == nullptr ? *propios_ : *opciones.archivos),
          enArchivo_(opciones.ajustesEnArchivo ? platform::crearArbolAjustes(archivos, rutaAjustes())
                                               : nullptr),
          ajustes(enArchivo_ ? *enArchivo_ : static_cast<platform::ArbolAjustes&>(memoria), &memoriaMaquina),
          almacen(ajustes, guion),
          carpetas(archivos, ajustes, ruta("temporal"), ruta("programa/bin")),
          entorno{estado, vista, guion, ajustes, almacen, carpetas, archivos, reloj, registro} {
        for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) {
            variables_.poner(variable, ruta(std::string("casa/") + variable));
        }
        for (const char* subcarpeta : {"datos", "programa/bin", "programa/share/tarvoline", "temporal"}) {
            std::filesystem::create_directories(ruta(subcarpeta));
        }
        ajustes.GrabarRegistro("DATOS_DIR", datos());
        ajustes.GrabarRegistro("DATOS_DIR", datos(), {}, "VXCRM");
        memoria.grabaciones = 0;
        ponerEstado();
        ponerMarcas();
    }
    NucleoPrueba(const NucleoPrueba&) = delete;
    NucleoPrueba& operator=(const NucleoPrueba&) = delete;

    // Paths inside the test's folder.
    std::string ruta(std::string_view nombre = {}) const { return carpeta_.ruta(nombre); }
    std::string datos(std::string_view nombre = {}) const { return ruta("datos/" + std::string(nombre)); }
    std::string rutaAjustes() const { return ruta("casa/XDG_CONFIG_HOME/QZ/ajustes.ini"); }
    const CarpetaPrueba& carpeta() const { return carpeta_; }

    // The user who logged in, and who is in force.
    void entrarComo(const std::string& usuario, const std::string& clave, const std::string& cuenta = {}) {
        estado.gUsuario = estado.gUsuarioSesion = usuario;
        estado.gPassword = estado.gPasswordSesion = clave;
        estado.gCuenta = estado.gCuentaSesion = cuenta;
    }
    // "<n>" for every number, so that a test sees which text was taken.
    void ponerMarcas() {
        std::vector<std::string> textos;
        for (int i = 0; i <= core::textosAmpliados; ++i) {
            const bool fallo = i == core::textoFallo || i == core::textoFalloCopia;
            textos.push_back((fallo ? "ERROR<" : "<") + std::to_string(i) + ">");
        }
        estado.gTextos.asignar(std::move(textos));
    }

    platform::SistemaArchivos& archivos;
    AjustesMemoria memoria;         // the user's settings, unless they lie in a file
    AjustesMemoria memoriaMaquina;  // the machine-wide ones
    EscritorioGuion guion;
    RelojFijo reloj;
    RegistroGuardado registro;
    core::Estado estado;
    core::Vista vista;

  private:
    std::unique_ptr<platform::ArbolAjustes> enArchivo_;

  public:
    core::Ajustes ajustes;
    core::AlmacenComun almacen;
    core::Carpetas carpetas;
    core::Entorno entorno;

  private:
    void ponerEstado() {
        estado.gDatosDir = datos();
        estado.gDirectorio = ruta("programa/share/tarvoline/");
        estado.gCarpeta = "DATOS";
        estado.gModoGauge = core::modo_gauge::ventanaPrincipal;
        estado.gTextosHistorico[core::haSubidoEmpresa] = " ha subido la empresa ";
        estado.gTextosHistorico[core::haBajadoEmpresa] = " ha bajado la empresa ";
        estado.gTextosHistorico[core::haSubidoArchivo] = " ha subido el archivo ";
        estado.gTextosHistorico[core::haBajadoArchivo] = " ha bajado el archivo ";
        estado.gTextosHistorico[core::haBorradoArchivo] = " ha borrado el archivo ";
    }
};

}  // namespace tarvoline::pruebas
