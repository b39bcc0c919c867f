// Records through the tables of a company, each beside what the system itself takes for the same bytes: a
// journal of 100,000 lines (21 fields, 465 bytes, 4 keys). One process, nobody waiting for the disk.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#include "core/ajustes.h"
#include "core/carpetas.h"
#include "data/monedas.h"
#include "data/tablas.h"
#include "platform/arbol_ajustes.h"
#include "platform/archivos.h"
#include "platform/reloj.h"

namespace {

using namespace tarvoline;
using data::tabla::extra;

constexpr std::int32_t lineas = 100'000;
constexpr const char* nombresTablas[] = {"PLANC", "EXTRA", "DATOS", "IVA01", "EFECT",
                                         "PRESU", "COSTO", "PLANA", "ANALI"};

struct Campo {
    const char* nombre;
    int tipo;
    int ancho;
};
constexpr Campo campos[] = {
    {"FECHA", 5, 6},      {"CUENTA", 0, 10}, {"ASIENTO", 0, 6},   {"DESCRIPCION", 0, 60}, {"TIPO", 0, 1},
    {"IMPORTE", 3, 12},   {"PUNTEO", 0, 3},  {"DIARIO", 0, 1},    {"CAMBIO 2", 3, 12},    {"VALOR 2", 3, 12},
    {"MONEDA", 0, 1},     {"CAMBIO", 3, 12}, {"VALOR", 3, 12},    {"CANAL", 0, 3},        {"USUARIO", 0, 2},
    {"NOTAS", 0, 250},    {"TITULO", 0, 40}, {"ANALITICA", 0, 6}, {"CLAVE", 0, 1},        {"HORA", 0, 16},
    {"REFERENCIA", 0, 20}};
constexpr int descripcion = 4;

std::string definicion() {
    data::DefinicionTabla tabla;
    tabla.titulo = "DIARIO";
    for (const Campo& campo : campos) {
        data::CampoTabla uno;
        uno.nombre = campo.nombre;
        uno.tipo = campo.tipo;
        uno.ancho = campo.ancho;
        uno.posicion = static_cast<int>(tabla.campos.size());
        tabla.campos.push_back(uno);
    }
    tabla.gNumeroCampos = static_cast<int>(std::size(campos));
    tabla.claves[1] = {{1, 1, 6}, {3, 1, 6}};
    tabla.claves[2] = {{2, 1, 10}, {1, 1, 6}};
    tabla.claves[3] = {{18, 1, 6}};
    tabla.claves[4] = {{21, 1, 20}};
    tabla.numeroClaves = 4;
    return data::componerDefinicion(tabla);
}

// A company in a folder of its own, the journal filled once.
class Empresa {
  public:
    static Empresa& unica() {
        static Empresa empresa;
        return empresa;
    }
    ~Empresa() { std::filesystem::remove_all(carpeta_); }

    void ponerLinea(std::int32_t numero) {
        const auto texto = [](std::int64_t valor, std::size_t ancho) {
            std::string cifras = std::to_string(valor);
            return std::string(ancho - std::min(ancho, cifras.size()), '0') + cifras;
        };
        tablas.ponerCampo(extra, 1, "26" + texto(1 + numero / 9000, 2) + texto(1 + numero % 28, 2));
        tablas.ponerCampo(extra, 2, texto(4'300'000 + azar() % 5000, 7));
        tablas.ponerCampo(extra, 3, texto(numero / 3, 6));
        tablas.ponerCampo(extra, descripcion, "Su factura num. " + texto(numero, 8));
        tablas.ponerCampo(extra, 6, std::to_string(azar() % 100'000) + ".25");
        tablas.ponerCampo(extra, 13, tablas.gCampos(extra, 6));
        tablas.ponerCampo(extra, 21, texto(static_cast<std::int64_t>(azar() % 1'000'000), 12));
    }
    const std::string& carpeta() const { return carpeta_; }
    std::string rutaDatos() const { return tablas.ranura(extra).rutaDatos; }

    std::mt19937 azar{1};

  private:
    Empresa() {
        for (const char* nombre : nombresTablas)
            std::ofstream(carpeta_ + "/" + nombre + ".QZA", std::ios::binary) << definicion();
        std::ofstream(carpeta_ + "/Moneda.QZF", std::ios::binary)
            << data::componerMoneda({2, "EURO", "EUR", "", 0, 1, 2});
        capa.enVigor.gDirectorioEmpresa = carpeta_ + "/";
        capa.enVigor.gEmpresaActual = "07";
        capa.gMultiusuario = true;
        tablas.AbrirTablasEmpresa();
        for (std::int32_t i = 1; i <= lineas; ++i) {
            ponerLinea(i);
            tablas.AnadirRegistro(extra);
        }
    }

    static std::string carpetaNueva() {
        std::string patron = (std::filesystem::temp_directory_path() / "tarvoline-bench-XXXXXX").string();
        if (::mkdtemp(patron.data()) == nullptr) std::exit(1);
        return patron;
    }

    const std::string carpeta_ = carpetaNueva();
    std::unique_ptr<platform::SistemaArchivos> archivos_ = platform::crearSistemaArchivos();
    std::unique_ptr<platform::ArbolAjustes> arbol_ =
        platform::crearArbolAjustes(*archivos_, carpeta_ + "/ajustes.ini");
    core::Ajustes ajustes_{*arbol_};
    // The settings name the folder of the definitions before anybody asks for it.
    const bool preparado_ =
        (ajustes_.GrabarRegistro("Directory", carpeta_), ajustes_.GrabarRegistro("CON_DIR", carpeta_), true);
    core::Carpetas carpetas_{*archivos_, ajustes_, carpeta_};
    std::unique_ptr<platform::Reloj> reloj_ = platform::crearReloj();

  public:
    data::CapaDatos capa{*archivos_, ajustes_, carpetas_, *reloj_};
    data::Tablas tablas{capa};
};

// --- Adding
// --------------------------------------------------------------------------------------------------

void anadirRegistro(benchmark::State& estado) {
    Empresa& e = Empresa::unica();
    std::int32_t numero = lineas;
    for ([[maybe_unused]] auto _ : estado) {
        e.ponerLinea(++numero);
        e.tablas.AnadirRegistro(extra);
    }
}

// The engine's part of it, on the same keys.
void anadirSoloClaves(benchmark::State& estado) {
    Empresa& e = Empresa::unica();
    std::int32_t numero = lineas;
    for ([[maybe_unused]] auto _ : estado) {
        e.ponerLinea(++numero);
        e.tablas.orden("I\\2" + e.tablas.textosClave(extra));
    }
}

// --- Reading
// -------------------------------------------------------------------------------------------------

void leerRegistro(benchmark::State& estado) {
    Empresa& e = Empresa::unica();
    for ([[maybe_unused]] auto _ : estado)
        e.tablas.LeerRegistro(extra, static_cast<std::int32_t>(1 + e.azar() % lineas));
}
BENCHMARK(leerRegistro);

void leerCabeceraRegistro(benchmark::State& estado) {
    Empresa& e = Empresa::unica();
    for ([[maybe_unused]] auto _ : estado)
        e.tablas.LeerCabeceraRegistro(extra, static_cast<std::int32_t>(1 + e.azar() % lineas));
}
BENCHMARK(leerCabeceraRegistro);

void leerConPread(benchmark::State& estado) {
    Empresa& e = Empresa::unica();
    const int archivo = ::open(e.rutaDatos().c_str(), O_RDONLY | O_CLOEXEC);
    const auto longitud = static_cast<std::size_t>(e.tablas.definicion(extra).gLongitudRegistro);
    std::string bytes(longitud, '\0');
    for ([[maybe_unused]] auto _ : estado) {
        const auto donde = static_cast<off_t>(e.azar() % lineas * longitud);
        benchmark::DoNotOptimize(::pread(archivo, bytes.data(), longitud, donde));
    }
    ::close(archivo);
}
BENCHMARK(leerConPread);

// --- The raw scan
// --------------------------------------------------------------------------------------------

void buscar(benchmark::State& estado, const std::string& texto, bool ignorarMayusculas) {
    Empresa& e = Empresa::unica();
    for ([[maybe_unused]] auto _ : estado) {
        data::Tablas::Busqueda busqueda;
        benchmark::DoNotOptimize(
            e.tablas.BuscarEnTabla(busqueda, extra, descripcion, texto, ignorarMayusculas));
    }
    const auto longitud = static_cast<std::int64_t>(e.tablas.definicion(extra).gLongitudRegistro);
    estado.SetBytesProcessed(estado.iterations() * e.tablas.cuantosRegistros(extra) * longitud);
}
BENCHMARK_CAPTURE(buscar, texto, "Cobro aplazado", false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(buscar, cifras, "99999999", false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(buscar, importe, data::DobleATexto(123456.78), false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(buscar, sinCaja, "Cobro aplazado", true)->Unit(benchmark::kMillisecond);

void mismosBloquesConPread(benchmark::State& estado) {
    Empresa& e = Empresa::unica();
    const int archivo = ::open(e.rutaDatos().c_str(), O_RDONLY | O_CLOEXEC);
    const auto longitud = static_cast<std::size_t>(e.tablas.definicion(extra).gLongitudRegistro);
    std::string bloque(65535 / longitud * longitud, '\0');
    std::int64_t total = 0;
    for ([[maybe_unused]] auto _ : estado) {
        off_t donde = 0;
        for (ssize_t n = 1; n > 0; donde += n)
            n = ::pread(archivo, bloque.data(), bloque.size(), donde);
        total += donde;
    }
    ::close(archivo);
    estado.SetBytesProcessed(total);
}
BENCHMARK(mismosBloquesConPread)->Unit(benchmark::kMillisecond);

// --- Opening
// -------------------------------------------------------------------------------------------------

// Processor time, which other work on the machine disturbs least.
double ahora() {
    timespec hora{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &hora);
    return static_cast<double>(hora.tv_sec) + static_cast<double>(hora.tv_nsec) / 1e9;
}

// Last: it closes what the others work on. Nine tables with their keys; closing them is the other figure.
void abrirTablasEmpresa(benchmark::State& estado) {
    Empresa& e = Empresa::unica();
    for ([[maybe_unused]] auto _ : estado) {
        e.tablas.CerrarTodo();
        const double antes = ahora();
        e.tablas.AbrirTablasEmpresa();
        estado.SetIterationTime(ahora() - antes);
    }
}

void cerrarTodo(benchmark::State& estado) {
    Empresa& e = Empresa::unica();
    for ([[maybe_unused]] auto _ : estado) {
        e.tablas.AbrirTablasEmpresa();
        const double antes = ahora();
        e.tablas.CerrarTodo();
        estado.SetIterationTime(ahora() - antes);
    }
    e.tablas.AbrirTablasEmpresa();
}

// The data and key files of the nine tables, closed.
std::vector<std::string> archivosCerrados(benchmark::State& estado, const std::string& extensiones) {
    Empresa& e = Empresa::unica();
    e.tablas.CerrarTodo();
    std::vector<std::string> rutas;
    for (const auto& entrada : std::filesystem::directory_iterator(e.carpeta())) {
        const std::string extension = entrada.path().extension().string();
        if (!extension.empty() && extensiones.find(extension) != std::string::npos)
            rutas.push_back(entrada.path().string());
    }
    if (rutas.size() % std::size(nombresTablas) != 0 || rutas.empty())
        estado.SkipWithError("not nine tables with keys");
    return rutas;
}

// What the system takes for the same files at least: opened and held, nothing asked or read of them.
void abrirLosMismosArchivos(benchmark::State& estado) {
    const auto rutas = archivosCerrados(estado, ".QZD.QZC");
    std::vector<int> abiertos(rutas.size());
    for ([[maybe_unused]] auto _ : estado) {
        const double antes = ahora();
        for (std::size_t i = 0; i < rutas.size(); ++i) {
            abiertos[i] = ::open(rutas[i].c_str(), O_RDWR | O_CLOEXEC);
            struct flock centinela {};
            centinela.l_type = F_RDLCK;
            centinela.l_start = platform::byteCentinela;
            centinela.l_len = 1;
            ::fcntl(abiertos[i], F_OFD_SETLK, &centinela);
        }
        estado.SetIterationTime(ahora() - antes);
        for (const int abierto : abiertos)
            ::close(abierto);
    }
    Empresa::unica().tablas.AbrirTablasEmpresa();
}

// How dear the system's calls are on this machine: nine key files opened, a head read of each, closed.
void nueveArchivosDesnudos(benchmark::State& estado) {
    const auto rutas = archivosCerrados(estado, ".QZC");
    std::vector<int> abiertos(rutas.size());
    std::array<char, 512> cabeza{};
    std::size_t leidos = 0;
    for ([[maybe_unused]] auto _ : estado) {
        const double antes = ahora();
        for (std::size_t i = 0; i < rutas.size(); ++i) {
            abiertos[i] = ::open(rutas[i].c_str(), O_RDWR | O_CLOEXEC);
            leidos += static_cast<std::size_t>(::pread(abiertos[i], cabeza.data(), cabeza.size(), 0));
        }
        for (const int abierto : abiertos)
            ::close(abierto);
        estado.SetIterationTime(ahora() - antes);
    }
    benchmark::DoNotOptimize(leidos);
    Empresa::unica().tablas.AbrirTablasEmpresa();
}
BENCHMARK(nueveArchivosDesnudos)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(abrirLosMismosArchivos)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(abrirTablasEmpresa)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(cerrarTodo)->UseManualTime()->Unit(benchmark::kMicrosecond);

// These make the table longer, which the scans above would see.
BENCHMARK(anadirRegistro)->Iterations(50'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(anadirSoloClaves)->Iterations(50'000)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
