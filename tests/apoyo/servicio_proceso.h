// The real backup service as a child process: started on a free port below a fresh folder, given users,
// killed or ended, and started again on the same port. A program that uses it names tarvoline-servicio in
// NEEDS.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "apoyo/carpeta_prueba.h"

namespace tarvoline::pruebas {

class ServicioProceso {
  public:
    // Starts it. `opciones` are added to its command line. Standard error goes to "servicio.err" in its
    // folder.
    explicit ServicioProceso(std::vector<std::string> opciones = {}) : opciones_(std::move(opciones)) {
        arrancar();
    }
    ~ServicioProceso() { terminar(SIGKILL); }
    ServicioProceso(const ServicioProceso&) = delete;
    ServicioProceso& operator=(const ServicioProceso&) = delete;

    // "http://127.0.0.1:PORT/qzback/service.asmx?wsdl", as the program printed it.
    const std::string& url() const { return url_; }
    std::string anfitrion() const {
        return "127.0.0.1:" + std::to_string(puerto_);
    }  // for the settings' "IP"
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
        const pid_t hijo = lanzar(argumentos, "/dev/null");
        int estado = 0;
        ::waitpid(hijo, &estado, 0);
        return WIFEXITED(estado) ? WEXITSTATUS(estado) : 128 + WTERMSIG(estado);
    }

    // Sends the signal and waits for the end; the exit code, 128 + signal when that ended it, nothing when it
    // was not running.
    std::optional<int> terminar(int senal = SIGTERM) {
        if (hijo_ <= 0) return std::nullopt;
        ::kill(hijo_, senal);
        int estado = 0;
        ::waitpid(hijo_, &estado, 0);
        hijo_ = -1;
        return WIFEXITED(estado) ? WEXITSTATUS(estado) : 128 + WTERMSIG(estado);
    }
    void matar() { terminar(SIGKILL); }

    // Again, on the same port and the same data.
    void arrancar() {
        if (hijo_ > 0) throw std::logic_error("el servicio ya está en marcha");
        std::vector<std::string> argumentos{"--raiz", raiz(), "--puerto", std::to_string(puerto_)};
        argumentos.insert(argumentos.end(), opciones_.begin(), opciones_.end());
        int tubo[2];
        if (::pipe2(tubo, O_CLOEXEC) != 0) throw std::runtime_error("pipe");
        hijo_ = lanzar(argumentos, {}, tubo[1]);
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
    // Standard output goes to the file `salida`, or to the descriptor `tubo`.
    pid_t lanzar(const std::vector<std::string>& argumentos, const std::string& salida, int tubo = -1) const {
        const std::string programa = std::string(TARVOLINE_BIN) + "/tarvoline-servicio";
        const std::string errores = carpeta_.ruta("servicio.err");
        std::vector<char*> argv{const_cast<char*>(programa.c_str())};
        for (const std::string& argumento : argumentos)
            argv.push_back(const_cast<char*>(argumento.c_str()));
        argv.push_back(nullptr);
        const pid_t hijo = ::fork();
        if (hijo < 0) throw std::runtime_error("fork");
        if (hijo > 0) return hijo;
        // Only what may be called between fork and exec in a program with threads.
        const int error = ::open(errores.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        const int normal = tubo >= 0 ? tubo : ::open(salida.c_str(), O_WRONLY);
        ::dup2(error, 2);
        ::dup2(normal, 1);
        ::execv(programa.c_str(), argv.data());
        ::_exit(127);
    }

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
    pid_t hijo_ = -1;
};

}  // namespace tarvoline::pruebas
