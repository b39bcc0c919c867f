// Runs the program `subidor` and tells how it ended.
#pragma once

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "workflows/mundo_flujos.h"

namespace tarvoline::pruebas {

struct FinSubidor {
    int senal = 0;   // that ended it; 0 = it ended by itself
    int codigo = 0;  // its exit code
    std::string salida, errores;
    long memoria = 0;  // largest resident size, in KiB
};

// `mundo` has its settings in a file.
inline FinSubidor subidor(MundoFlujos& mundo, const std::string& url, const std::vector<std::string>& orden) {
    const std::string programa = std::string(TARVOLINE_BIN) + "/../tests/subidor";
    std::vector<std::string> argumentos{programa, mundo.nucleo.rutaAjustes(), mundo.nucleo.ruta("temporal"),
                                        url};
    argumentos.insert(argumentos.end(), orden.begin(), orden.end());
    std::vector<char*> argv;
    for (auto& argumento : argumentos)
        argv.push_back(argumento.data());
    argv.push_back(nullptr);
    const auto salida = mundo.nucleo.ruta("subidor.salida");
    const auto errores = mundo.nucleo.ruta("subidor.errores");
    const pid_t hijo = ::fork();
    if (hijo < 0) throw std::runtime_error("fork");
    if (hijo == 0) {
        ::dup2(::open(salida.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
        ::dup2(::open(errores.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
        ::execv(argv[0], argv.data());
        ::_exit(127);
    }
    int estado = 0;
    rusage uso{};
    ::wait4(hijo, &estado, 0, &uso);
    return {WIFSIGNALED(estado) ? WTERMSIG(estado) : 0, WIFEXITED(estado) ? WEXITSTATUS(estado) : -1,
            mundo.nucleo.carpeta().leer("subidor.salida"), mundo.nucleo.carpeta().leer("subidor.errores"),
            uso.ru_maxrss};
}

}  // namespace tarvoline::pruebas
