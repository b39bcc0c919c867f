// The real backup service as a child process: started on a free port below a fresh folder, given users,
// killed or ended, and started again on the same port. A program that uses it names tarvoline-servicio in
// NEEDS.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "apoyo/carpeta_prueba.h"
#include "apoyo/proceso.h"

namespace tarvoline::pruebas {

class ServicioProceso {
  public:
    // Starts it. `opciones` are added to its command line. Standard error goes to "servicio.err" in its
    // folder.
    explicit ServicioProceso(std::vector<std::string> opciones = {}) : opciones_(std::move(opciones)) {
        arrancar();
    }

    // "http://127.0.0.1:PORT/qzback/service.asmx?wsdl", as the program printed it.
    const std::string& url() const { return url_; }
    // For the settings' "IP".
    std::string anfitrion() const { return "127.0.0.1:" + std::to_string(puerto_); }
    int puerto() const { return puerto_; }
    std::string raiz() const { return carpeta_.ruta("raiz"); }
    const CarpetaPrueba& carpeta() const { return carpeta_; }

    // `usuario --alta`, while the service runs. `gb` 0 = the account's capacity is not known.
    void alta(const std::string& usuario, const std::string& clave, const std::string& cuenta, int gb = 1,
              const std::string& etiqueta = {}) {
        std::vector<std::string> argumentos{"usuario",         "--raiz", raiz(),     "--alta", usuario,
                                            "--clave",         clave,    "--cuenta", cuenta,   "--gb",
                                            std::to_string(gb)};
        if (!etiqueta.empty()) argumentos.insert(argumentos.end(), {"--etiqueta", etiqueta});
        if (const int codigo = mandato(argumentos); codigo != 0) {
            throw std::runtime_error("tarvoline-servicio usuario --alta: código " + std::to_string(codigo));
        }
    }
    // Runs the program with these arguments to its end; its exit code.
    int mandato(const std::vector<std::string>& argumentos) const {
        return Proceso(programa, argumentos, "/dev/null", carpeta_.ruta("mandato.err")).esperar();
    }

    // Sends the signal and waits for the end; the exit code, 128 + signal when that ended it, nothing when it
    // was not running.
    std::optional<int> terminar(int senal = SIGTERM) {
        if (!proceso_) return std::nullopt;
        const int codigo = proceso_->terminar(senal);
        proceso_.reset();
        return codigo;
    }
    void matar() { terminar(SIGKILL); }

    // Again, on the same port and the same data.
    void arrancar() {
        if (proceso_) throw std::logic_error("el servicio ya está en marcha");
        std::vector<std::string> argumentos{"--raiz", raiz(), "--puerto", std::to_string(puerto_)};
        argumentos.insert(argumentos.end(), opciones_.begin(), opciones_.end());
        int tubo[2];
        if (::pipe2(tubo, O_CLOEXEC) != 0) throw std::runtime_error("pipe");
        proceso_.emplace(programa, argumentos, "/dev/fd/" + std::to_string(tubo[1]),
                         carpeta_.ruta("servicio.err"));
        ::close(tubo[1]);
        url_ = primeraLinea(tubo[0]);
        ::close(tubo[0]);
        const auto puerto = url_.find(':', url_.find("//"));
        if (puerto == std::string::npos) {
            terminar(SIGKILL);
            throw std::runtime_error("tarvoline-servicio no arranca: " + carpeta_.leer("servicio.err"));
        }
        puerto_ = std::stoi(url_.substr(puerto + 1));
    }

  private:
    static constexpr const char* programa = "tarvoline-servicio";

    static std::string primeraLinea(int descriptor) {
        std::string linea;
        char letra = 0;
        while (::read(descriptor, &letra, 1) == 1 && letra != '\n')
            linea += letra;
        return linea;
    }

    CarpetaPrueba carpeta_;
    std::vector<std::string> opciones_;
    std::string url_;
    int puerto_ = 0;
    std::optional<Proceso> proceso_;
};

}  // namespace tarvoline::pruebas
