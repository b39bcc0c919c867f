// A file that loses its name while it is opened: told by the date of its last change, or by its name.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <functional>
#include <thread>

#include "platform/posix/descriptor.h"
#include "platform/posix/quietud.h"
#include "platform/posix/volumenes.h"
#include "sistemas.h"

namespace tarvoline::pruebas {

using namespace platform;
using posix::Momento;

namespace {

// Milliseconds from some day on.
timespec hora(std::int64_t milisegundos) {
    return {static_cast<time_t>(1'700'000'000 + milisegundos / 1000),
            static_cast<long>(milisegundos % 1000 * 1'000'000)};
}

struct stat datosDe(const posix::Descriptor& archivo) {
    struct stat datos {};
    EXPECT_EQ(::fstat(archivo.numero(), &datos), 0);
    return datos;
}

}  // namespace

TEST(Quietud, SoloLoCierto) {
    struct Caso {
        const char* que;
        std::int64_t fecha, corrido, cambio;  // dates after, running clock after, last change; before: 100 s
        bool quieto;
    };
    const Caso casos[] = {
        {"changed long ago", 100'010, 100'010, 1'111, true},
        {"changed just now", 100'010, 100'010, 100'005, false},
        {"changed just before", 100'010, 100'010, 99'950, false},
        {"changed in the future", 100'010, 100'010, 200'111, false},
        {"some file systems keep whole seconds", 100'010, 100'010, 99'000, false},
        {"whole seconds, long ago", 100'010, 100'010, 98'000, true},
        {"the opener slept", 160'010, 160'010, 1'111, false},
        {"clock set back by much", 40'010, 100'010, 1'111, false},
        {"set back by as much as the opener slept", 100'010, 160'010, 1'111, false},
        {"clock set on", 160'010, 100'010, 1'111, false},
    };
    const Momento antes{hora(100'000), hora(100'000)};
    for (const Caso& caso : casos) {
        const Momento despues{hora(caso.fecha), hora(caso.corrido)};
        EXPECT_EQ(posix::quietoEntre(antes, despues, hora(caso.cambio)), caso.quieto) << caso.que;
    }
}

// Whatever can happen to the name of an open file shows in its date, where the file system is one of those
// that are trusted to date it.
TEST(Quietud, NingunCambioDeNombreSePasa) {
    const CarpetaPrueba carpeta;
    const std::string aqui = carpeta.ruta("x");
    const std::string alli = carpeta.ruta("y");
    const std::pair<const char*, std::function<void()>> cambios[] = {
        {"none", [] {}},
        {"replaced", [&] { ::rename(alli.c_str(), aqui.c_str()); }},
        {"replaced, but for another link",
         [&] {
             ::link(aqui.c_str(), carpeta.ruta("z").c_str());
             ::rename(alli.c_str(), aqui.c_str());
         }},
        {"moved away", [&] { ::rename(aqui.c_str(), carpeta.ruta("w").c_str()); }},
        {"removed", [&] { ::unlink(aqui.c_str()); }},
        {"written", [&] { carpeta.escribir("x", "other"); }},
    };
    for (const auto& [que, cambiar] : cambios) {
        carpeta.escribir("x", "one");
        carpeta.escribir("y", "two");
        const posix::Descriptor archivo(::open(aqui.c_str(), O_RDWR | O_CLOEXEC));
        if (!posix::volumenDe(archivo.numero()).fechaNombres) GTEST_SKIP() << "not dated here";
        const auto quietoTras = [&](const std::function<void()>& paso) {
            const Momento antes = Momento::ahora();
            paso();
            return posix::quietoEntre(antes, Momento::ahora(), datosDe(archivo).st_ctim);
        };
        while (!quietoTras([] {}))
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        // Some tries, since the opener may be stopped for a while by chance, which counts as "not certain".
        bool quieto = quietoTras(cambiar);
        for (int i = 0; i < 100 && std::string_view(que) == "none" && !quieto; ++i)
            quieto = quietoTras(cambiar);
        EXPECT_EQ(quieto, std::string_view(que) == "none") << que;
    }
}

TEST(Quietud, QuienTieneElCentinelaTieneElNombre) {
    const CarpetaPrueba carpeta;
    const auto archivos = crearSistemaArchivos();
    carpeta.escribir("x", "0");
    std::atomic<bool> fin{false};
    std::atomic<int> aperturas{0};
    const auto abrirSinParar = [&] {
        while (!fin) {
            try {
                const auto archivo =
                    archivos->abrir(carpeta.ruta("x"), Apertura::escritura, Comparticion::acordada);
                const auto nombrado = archivos->estado(carpeta.ruta("x"));
                EXPECT_TRUE(nombrado && nombrado->identidad == archivo->estado().identidad);
                ++aperturas;
            } catch (const ErrorArchivo& error) {
                EXPECT_EQ(error.numero(), error_archivo::permisoDenegado);
            }
        }
    };
    std::thread uno(abrirSinParar);
    std::thread otro(abrirSinParar);
    int cambios = 0;
    while (cambios < 300 || aperturas < 300) {
        carpeta.escribir("nuevo", std::to_string(cambios));
        try {
            const auto viejo =
                archivos->abrir(carpeta.ruta("x"), Apertura::escritura, Comparticion::exclusiva);
            archivos->renombrar(carpeta.ruta("nuevo"), carpeta.ruta("x"));
            ++cambios;
        } catch (const ErrorArchivo& error) {
            EXPECT_EQ(error.numero(), error_archivo::permisoDenegado);
        }
    }
    fin = true;
    uno.join();
    otro.join();
}

TEST(Volumenes, LoMismoQueElSistemaPreguntadoUnaVezODos) {
    const CarpetaPrueba carpeta;
    posix::Volumenes volumenes;
    for (const std::string& sitio : {carpeta.ruta(), std::string("/dev/shm"), std::string("/proc/self")}) {
        const posix::Descriptor abierto(::open(sitio.c_str(), O_RDONLY | O_CLOEXEC));
        if (!abierto.abierto()) continue;
        const auto debido = posix::volumenDe(abierto.numero());
        for (int i = 0; i < 2; ++i) {
            const auto dado = volumenes.de(abierto.numero(), datosDe(abierto).st_dev);
            EXPECT_EQ(dado.local, debido.local) << sitio;
            EXPECT_EQ(dado.fechaNombres, debido.fechaNombres) << sitio;
        }
        EXPECT_FALSE(sitio == "/proc/self" && debido.local);
    }
}

}  // namespace tarvoline::pruebas
