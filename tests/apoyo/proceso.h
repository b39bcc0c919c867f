// One of the project's programs as a child process; killed with the object.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace tarvoline::pruebas {

class Proceso {
  public:
    // Its standard output and errors go to files of these names, made anew.
    Proceso(const std::string& programa, const std::vector<std::string>& argumentos,
            const std::string& salida, const std::string& errores) {
        const auto ruta = std::string(TARVOLINE_BIN) + "/" + programa;
        std::vector<char*> argv{const_cast<char*>(ruta.c_str())};
        for (const auto& argumento : argumentos)
            argv.push_back(const_cast<char*>(argumento.c_str()));
        argv.push_back(nullptr);
        hijo_ = ::fork();
        if (hijo_ < 0) throw std::runtime_error("fork");
        if (hijo_ > 0) return;
        // Only what may be called between fork and exec in a program with threads.
        ::dup2(::open(salida.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
        ::dup2(::open(errores.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
        ::execv(ruta.c_str(), argv.data());
        ::_exit(127);
    }
    ~Proceso() {
        if (vive()) terminar(SIGKILL);
    }
    Proceso(const Proceso&) = delete;
    Proceso& operator=(const Proceso&) = delete;

    void senal(int cual) { ::kill(hijo_, cual); }
    bool vive() {
        recoger(WNOHANG);
        return hijo_ > 0;
    }
    // Waits for its end: the exit code, or 128 + the signal that ended it.
    int esperar() {
        recoger(0);
        return codigo_;
    }
    int terminar(int cual) {
        senal(cual);
        return esperar();
    }

  private:
    void recoger(int opciones) {
        int estado = 0;
        if (hijo_ > 0 && ::waitpid(hijo_, &estado, opciones) == hijo_) {
            hijo_ = -1;
            codigo_ = WIFEXITED(estado) ? WEXITSTATUS(estado) : 128 + WTERMSIG(estado);
        }
    }

    pid_t hijo_ = -1;
    int codigo_ = 0;
};

}  // namespace tarvoline::pruebas
