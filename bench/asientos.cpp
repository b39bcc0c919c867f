// Entries of three lines stored through the link, one after the other, beside SQLite with the same rows, keys
// and totals; the opening of a company; and the cost of an entry as the journal grows. Both sides open and
// close their files around each entry and do not wait for the disk.
// Usage: bench_asientos [LINES ...] (1000 10000 100000): at each size 500 entries are timed, the middle of
// five hundreds, processor time (elapsed time in brackets).
#include <time.h>

#include <chrono>
#include <cstdio>
#include <functional>
#include <thread>
#include <vector>

#include "asientos_sqlite.h"
#include "empresa_banco.h"
#include "link/posiciones.h"

namespace {

using namespace tarvoline;
using bench::cifras;

constexpr std::array<bench::LineaBanco, 3> venta{
    {{"4300000001", 1, 121.0}, {"7000000001", 2, 100.0}, {"4770000001", 2, 21.0}}};

constexpr std::int64_t hastaSqlite = 100'000;

double ahora(clockid_t reloj) {
    timespec hora{};
    clock_gettime(reloj, &hora);
    return static_cast<double>(hora.tv_sec) * 1e6 + static_cast<double>(hora.tv_nsec) / 1e3;
}

struct Coste {
    double procesador = 0;  // microseconds a time
    double reloj = 0;
};

Coste medir(int veces, const std::function<void()>& trabajo) {
    constexpr std::size_t tandas = 5;
    std::array<Coste, tandas> costes{};
    for (Coste& coste : costes) {
        const double antes = ahora(CLOCK_PROCESS_CPUTIME_ID);
        const double antesReloj = ahora(CLOCK_MONOTONIC);
        for (int vez = 0; vez < veces; ++vez)
            trabajo();
        coste = {(ahora(CLOCK_PROCESS_CPUTIME_ID) - antes) / veces,
                 (ahora(CLOCK_MONOTONIC) - antesReloj) / veces};
    }
    std::ranges::sort(costes, {}, &Coste::procesador);
    return costes[tandas / 2];
}

void decir(const char* que, Coste coste) {
    std::printf("%-34s %8.0f us  (%.0f)\n", que, coste.procesador, coste.reloj);
}

class Diario {
  public:
    Diario() : sqlite_(empresa_.carpeta() + "base", cuentas()) {
        for (const auto& linea : venta) {
            std::string cuenta = linea.cuenta;
            empresa_.enlace.CrearCuenta(cuenta, cuenta);
        }
    }

    void grabar() {
        auto& enlace = empresa_.enlace;
        enlace.Fecha("31/03/2026");
        enlace.Número("");
        for (const auto& linea : venta) {
            enlace.AñadirApunte(linea.cuenta, "Venta de contado " + cifras(numero_, 6), linea.tipo,
                                linea.importe, "1", 0, "", "F" + cifras(numero_, 8));
        }
        enlace.GrabarAsiento();
        ++numero_;
        lineas_ += 3;
    }
    void grabarSqlite() {
        sqlite_.grabar(venta, "C60331", "Venta de contado " + cifras(numero_, 6), "F" + cifras(numero_, 8));
        ++numero_;
        lineasSqlite_ += 3;
    }
    void crecerSqliteHasta(std::int64_t lineas) {
        while (lineasSqlite_ < lineas)
            grabarSqlite();
    }
    void crecerHasta(std::int64_t lineas) {
        while (lineas_ < lineas)
            grabar();
    }
    bench::EmpresaBanco& empresa() { return empresa_; }

  private:
    // The accounts of the entries and their parents.
    static std::vector<std::string> cuentas() {
        std::vector<std::string> todas;
        for (const auto& linea : venta) {
            for (const std::size_t longitud : {10U, 4U, 3U, 2U, 1U})
                todas.push_back(std::string(linea.cuenta).substr(0, longitud));
        }
        std::ranges::sort(todas);
        todas.erase(std::unique(todas.begin(), todas.end()), todas.end());
        return todas;
    }

    bench::EmpresaBanco empresa_{"1"};
    bench::LibroSqlite sqlite_;
    std::int64_t numero_ = 1;
    std::int64_t lineas_ = 0;
    std::int64_t lineasSqlite_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::int64_t> tamanos;
    for (int i = 1; i < argc; ++i)
        tamanos.push_back(std::strtoll(argv[i], nullptr, 10));
    if (tamanos.empty()) tamanos = {1'000, 10'000, 100'000};

    Diario diario;
    auto& empresa = diario.empresa();
    decir("a company opened", medir(40, [&] { empresa.enlace.AbrirEmpresa("Banco"); }));
    // Files of every day: not those of the last moment.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    decir("its nine tables opened, closed", medir(100, [&] {
              empresa.tablas().AbrirTablasEmpresa();
              empresa.tablas().CerrarTodo();
          }));
    for (const std::int64_t tamano : tamanos) {
        diario.crecerHasta(tamano);
        const std::string donde = std::to_string(tamano) + " lines";
        decir(("entry with " + donde).c_str(), medir(100, [&] { diario.grabar(); }));
        if (tamano > hastaSqlite) continue;
        diario.crecerSqliteHasta(tamano);
        decir(("the same in SQLite, " + donde).c_str(), medir(100, [&] { diario.grabarSqlite(); }));
    }
    return EXIT_SUCCESS;
}
