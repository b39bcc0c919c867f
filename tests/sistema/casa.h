// A user's home for whole programs: settings, data and state below a fresh folder, the programs run as
// processes.
#pragma once

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "apoyo/carpeta_prueba.h"
#include "apoyo/proceso.h"
#include "apoyo/variables_proceso.h"

namespace tarvoline::pruebas {

struct Salida {
    int codigo = 0;  // exit code, or 128 + signal
    std::string texto;
    std::string errores;
};

class Casa {
  public:
    Casa() {
        for (const char* variable :
             {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "TMPDIR"}) {
            std::filesystem::create_directories(carpeta_.ruta(variable));
            variables_.poner(variable, carpeta_.ruta(variable));
        }
        variables_.poner("no_proxy", "127.0.0.1");
        variables_.quitar("DISPLAY");
        variables_.quitar("TARVOLINE_CLAVE");
        std::filesystem::create_directories(carpeta_.ruta("empresas"));
        std::filesystem::create_directories(carpeta_.ruta("bajada"));
        grabar("DATOS_DIR", carpeta_.ruta("empresas") + "/", {});
    }

    const CarpetaPrueba& carpeta() const { return carpeta_; }
    VariablesProceso& variables() { return variables_; }
    std::string rutaAjustes() const { return carpeta_.ruta("XDG_CONFIG_HOME/QZ/ajustes.ini"); }
    std::string empresa(const std::string& nombre) const { return carpeta_.ruta("empresas/" + nombre); }

    std::unique_ptr<Proceso> lanzar(const std::string& programa, const std::vector<std::string>& argumentos,
                                    const std::string& nombre = "lanzado") const {
        return std::make_unique<Proceso>(programa, argumentos, carpeta_.ruta(nombre + ".sal"),
                                         carpeta_.ruta(nombre + ".err"));
    }
    Salida correr(const std::string& programa, const std::vector<std::string>& argumentos) const {
        const int codigo = lanzar(programa, argumentos, "corrido")->esperar();
        return {codigo, carpeta_.leer("corrido.sal"), carpeta_.leer("corrido.err")};
    }
    int desatendido() const { return correr("tarvoline", {"1"}).codigo; }

    void grabar(const std::string& clave, const std::string& valor,
                const std::string& seccion = "NETBACKUP") {
        std::vector<std::string> argumentos{"grabar", clave, valor, "-p", "VELDORIX"};
        if (!seccion.empty()) {
            argumentos.insert(argumentos.end(), {"-s", seccion});
        }
        if (correr("tarvoline-ajustes", argumentos).codigo != 0) {
            throw std::runtime_error("tarvoline-ajustes grabar " + clave);
        }
    }
    std::string leer(const std::string& clave) const {
        auto valor = correr("tarvoline-ajustes", {"leer", clave, "-s", "NETBACKUP", "-p", "VELDORIX"}).texto;
        valor.erase(valor.find_last_not_of(" \n") + 1);
        return valor;
    }
    // A company with a user of its own, marked as pending in that slot.
    std::string crearEmpresa(const std::string& nombre, const std::string& usuario, const std::string& clave,
                             int ranura) {
        const auto salida =
            correr("tarvoline-demo", {"--carpeta", carpeta_.ruta("empresas"), "--nombre", nombre, "--usuario",
                                      usuario, "--clave", clave, "--operaciones", "24"});
        const auto ruta = empresa(nombre + ".QZT");
        if (salida.codigo != 0 || !std::filesystem::exists(ruta)) {
            throw std::runtime_error("tarvoline-demo: " + salida.errores);
        }
        marcar(ruta, ranura);
        return ruta;
    }
    void marcar(const std::string& ruta, int ranura) {
        grabar("EMP" + std::to_string(ranura), "\"" + ruta + "\"");
    }
    std::string estado() const { return carpeta_.leer("XDG_STATE_HOME/tarvoline/estado.json"); }

  private:
    CarpetaPrueba carpeta_;
    VariablesProceso variables_;
};

}  // namespace tarvoline::pruebas
