// What a command of the index engine costs as the table grows: at each size 20,000 searches, steps and
// inserts are timed, in processor time. Usage: bench_curva [RECORDS ...] (10000 100000 1000000 10000000).
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <vector>

#include "almacenes.h"
#include "lineas.h"

namespace {

using namespace tarvoline::bench;

constexpr std::size_t veces = 20'000;

double microsegundos(const std::function<void()>& trabajo) {
    const auto ahora = [] {
        timespec hora{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &hora);
        return static_cast<double>(hora.tv_sec) * 1e6 + static_cast<double>(hora.tv_nsec) / 1e3;
    };
    const double antes = ahora();
    trabajo();
    return (ahora() - antes) / veces;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::size_t> tamanos;
    for (int i = 1; i < argc; ++i)
        tamanos.push_back(std::strtoull(argv[i], nullptr, 10));
    if (tamanos.empty()) tamanos = {10'000, 100'000, 1'000'000, 10'000'000};

    const auto carpeta =
        std::filesystem::temp_directory_path() / ("tarvoline-curva-" + std::to_string(getpid()));
    std::filesystem::create_directories(carpeta);
    auto almacen = rivalMotor().fabrica(carpeta.string(), true);
    Lineas lineas(20240229);
    std::size_t hay = 0;
    std::printf("%10s %8s %8s %8s %8s\n", "records", "search", "next", "insert", "MB");
    for (const std::size_t tamano : tamanos) {
        for (; hay < tamano; ++hay)
            almacen->insertar(lineas.siguiente());
        std::vector<Textos> nuevas(veces);
        for (Textos& nueva : nuevas)
            nueva = lineas.siguiente();
        // What is read for the first time is not what counts here.
        const auto buscar = [&] {
            for (std::size_t i = 0; i < veces; ++i)
                almacen->buscar(static_cast<unsigned>(i % 4), nuevas[i][i % 4]);
        };
        buscar();
        const double porBusqueda = microsegundos(buscar);
        std::size_t pasos = 0;
        const double porPaso =
            microsegundos([&] { pasos = almacen->recorrer(2); }) * veces / static_cast<double>(hay);
        if (pasos != hay) return EXIT_FAILURE;
        const double porInsercion = microsegundos([&] {
            for (const Textos& nueva : nuevas)
                almacen->insertar(nueva);
        });
        hay += veces;
        std::printf("%10zu %8.2f %8.2f %8.2f %8.1f\n", tamano, porBusqueda, porPaso, porInsercion,
                    almacen->megas());
        std::fflush(stdout);
    }
    almacen.reset();
    std::filesystem::remove_all(carpeta);
    return EXIT_SUCCESS;
}
