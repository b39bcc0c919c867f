// The index engine beside SQLite (rollback journal, truncated; WAL), LMDB and Berkeley DB (transactions), all
// without waiting for the disk, on the same work in one run: a journal-like table of four keys (12, 16, 30
// and 12 characters), one atomic command at a time. Prints microseconds a command, the ratios, and the
// sizes. Nothing here waits for the disk, so what one process does is told in processor time, which other
// work on the machine disturbs least; two processes, in elapsed time. Usage: bench_motor [RECORDS [FOLDER]]
// (200000, the temporary folder); every figure is the best of three rounds.
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "almacenes.h"
#include "lineas.h"

namespace {

using namespace tarvoline::bench;
namespace fs = std::filesystem;

constexpr int rondas = 3;

struct Cifras {
    double insertar = 1e9;
    double buscar = 1e9;
    double siguiente = 1e9;
    double borrar = 1e9;
    double dos = 1e9;
    double nueve = 1e9;
    double megas = 0;
};

double ahora(clockid_t reloj) {
    timespec hora{};
    clock_gettime(reloj, &hora);
    return static_cast<double>(hora.tv_sec) * 1e6 + static_cast<double>(hora.tv_nsec) / 1e3;
}

double microsegundos(std::size_t cuantas, const std::function<void()>& trabajo,
                     clockid_t reloj = CLOCK_PROCESS_CPUTIME_ID) {
    const double antes = ahora(reloj);
    trabajo();
    return (ahora(reloj) - antes) / static_cast<double>(cuantas);
}

void mejor(double& cifra, double nueva) {
    cifra = std::min(cifra, nueva);
}

std::vector<Textos> hacerLineas(std::size_t cuantas, std::uint64_t semilla) {
    Lineas lineas(semilla);
    std::vector<Textos> todas(cuantas);
    for (Textos& linea : todas)
        linea = lineas.siguiente();
    return todas;
}

void dosProcesos(Fabrica fabrica, const std::string& carpeta, const std::vector<Textos>& lineas,
                 std::size_t ordenes) {
    std::vector<pid_t> hijos;
    for (std::uint64_t quien = 0; quien < 2; ++quien) {
        const pid_t pid = fork();
        if (pid == 0) {
            const auto almacen = fabrica(carpeta, false);
            std::mt19937_64 azar(quien + 77);
            for (std::size_t i = 0; i < ordenes; ++i) {
                const Textos& linea = lineas[azar() % lineas.size()];
                if (azar() % 5 == 0) {
                    almacen->insertar(linea);
                } else {
                    almacen->buscar(azar() % 4, linea[0]);
                }
            }
            _exit(0);
        }
        hijos.push_back(pid);
    }
    for (const pid_t pid : hijos) {
        int estado = 0;
        waitpid(pid, &estado, 0);
        if (estado != 0) {
            std::fprintf(stderr, "a process of the mix failed\n");
            std::exit(EXIT_FAILURE);
        }
    }
}

void medirUna(Fabrica fabrica, const std::string& carpeta, const std::vector<Textos>& lineas, Cifras& c) {
    const std::size_t n = lineas.size();
    auto almacen = fabrica(carpeta, true);
    std::mt19937_64 azar(4711);
    mejor(c.insertar, microsegundos(n, [&] {
              for (const Textos& linea : lineas)
                  almacen->insertar(linea);
          }));
    c.megas = almacen->megas();
    std::vector<std::pair<unsigned, std::string>> busquedas(n);
    for (std::size_t i = 0; i < n; ++i) {
        const unsigned clave = static_cast<unsigned>(azar() % 4);
        std::string texto = lineas[azar() % n][clave];
        if (i % 2 == 1) texto[texto.size() / 2] = 'x';  // not there
        busquedas[i] = {clave, texto};
    }
    std::size_t hallados = 0;
    mejor(c.buscar, microsegundos(n, [&] {
              for (const auto& [clave, texto] : busquedas)
                  hallados += almacen->buscar(clave, texto) ? 1 : 0;
          }));
    if (hallados != (n + 1) / 2) {
        std::fprintf(stderr, "%zu of %zu searches were exact\n", hallados, n);
        std::exit(EXIT_FAILURE);
    }
    std::size_t andados = 0;
    mejor(c.siguiente, microsegundos(n, [&] { andados = almacen->recorrer(2); }));
    if (andados != n) {
        std::fprintf(stderr, "the walk saw %zu of %zu\n", andados, n);
        std::exit(EXIT_FAILURE);
    }
    const std::size_t borrados = n / 4;
    std::vector<std::size_t> cuales(n);
    for (std::size_t i = 0; i < n; ++i)
        cuales[i] = i;
    std::shuffle(cuales.begin(), cuales.end(), azar);
    mejor(c.borrar, microsegundos(borrados, [&] {
              for (std::size_t i = 0; i < borrados; ++i)
                  almacen->borrar(static_cast<std::uint32_t>(cuales[i] + 1), lineas[cuales[i]]);
          }));
    almacen.reset();
    const std::size_t ordenes = n / 4;
    mejor(c.dos, microsegundos(
                     2 * ordenes, [&] { dosProcesos(fabrica, carpeta, lineas, ordenes); }, CLOCK_MONOTONIC));
}

void medirNueve(FabricaNueve fabrica, const std::string& carpeta, Cifras& c) {
    const auto nueve = fabrica(carpeta);
    nueve->crear();
    // Files of every day: not those of the last moment.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    constexpr std::size_t veces = 200;
    mejor(c.nueve, microsegundos(veces, [&] {
              for (std::size_t i = 0; i < veces; ++i)
                  nueve->abrirYCerrar();
          }));
}

void imprimir(const char* nombre, const Cifras& c) {
    std::printf("%-16s %8.2f %8.2f %8.2f %8.2f %8.2f %9.1f %8.1f\n", nombre, c.buscar, c.siguiente,
                c.insertar, c.borrar, c.dos, c.nueve, c.megas);
}

void imprimirRazon(const char* nombre, const Cifras& otra, const Cifras& nuestra) {
    std::printf("%-16s %7.2fx %7.2fx %7.2fx %7.2fx %7.2fx %8.1fx %7.2fx\n", nombre,
                otra.buscar / nuestra.buscar, otra.siguiente / nuestra.siguiente,
                otra.insertar / nuestra.insertar, otra.borrar / nuestra.borrar, otra.dos / nuestra.dos,
                otra.nueve / nuestra.nueve, nuestra.megas / otra.megas);
}

}  // namespace

int main(int argc, char** argv) {
    const std::size_t n = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 200000;
    const fs::path base = (argc > 2 ? fs::path(argv[2]) : fs::temp_directory_path()) /
                          ("tarvoline-bench-" + std::to_string(getpid()));
    const auto lineas = hacerLineas(n, 20240229);
    const auto rivales = todosLosRivales();
    std::vector<Cifras> cifrasDe(rivales.size());
    for (int ronda = 0; ronda < rondas; ++ronda) {
        for (std::size_t i = 0; i < rivales.size(); ++i) {
            const std::string carpeta = (base / (std::to_string(i) + "-" + std::to_string(ronda))).string();
            fs::create_directories(carpeta);
            medirUna(rivales[i].fabrica, carpeta, lineas, cifrasDe[i]);
            medirNueve(rivales[i].fabricaNueve, carpeta, cifrasDe[i]);
            fs::remove_all(carpeta);
        }
    }
    fs::remove_all(base);
    std::printf("%zu records, microseconds a command, MB after the inserts\n", n);
    std::printf("%-16s %8s %8s %8s %8s %8s %9s %8s\n", "", "search", "next", "insert", "delete", "two",
                "nine", "MB");
    for (std::size_t i = 0; i < rivales.size(); ++i)
        imprimir(rivales[i].nombre, cifrasDe[i]);
    std::printf("times faster than (size: of theirs)\n");
    for (std::size_t i = 1; i < rivales.size(); ++i)
        imprimirRazon(rivales[i].nombre, cifrasDe[i], cifrasDe[0]);
    return EXIT_SUCCESS;
}
