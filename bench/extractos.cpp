// Lines a second of a statement: an account of 100,000 lines in a journal of its own, and in one where every
// eighth line is its.
#include <benchmark/benchmark.h>

#include <string>

#include "empresa_banco.h"
#include "link/posiciones.h"

namespace {

using namespace tarvoline;
using bench::cifras;
namespace extra = link::posicion::extra;

constexpr std::int32_t lineas = 100'000;

// A company whose account `cuenta` has every `cada`-th line.
class Libro : public bench::EmpresaBanco {
  public:
    explicit Libro(int cada) {
        data::Tablas& tablas = this->tablas();
        tablas.AbrirTablasEmpresa();
        const std::int64_t todas = std::int64_t{lineas} * cada;
        for (std::int64_t i = 0; i < todas; ++i)
            anadir(tablas, i, todas, i % cada == 0 ? cuenta : "4300000001");
        tablas.CerrarTodo();
    }

    static Libro& propio() {
        static Libro libro(1);
        return libro;
    }
    static Libro& compartido() {
        static Libro libro(8);
        return libro;
    }

    static constexpr const char* cuenta = "5700000000";

  private:
    static void anadir(data::Tablas& tablas, std::int64_t numero, std::int64_t cuantas,
                       const std::string& laCuenta) {
        constexpr int tabla = data::tabla::extra;
        const std::string importe = std::to_string(numero * 7 % 1'000'000) + "." + cifras(numero % 100, 2);
        tablas.blanquear(tabla);
        // A month is posted behind the other, its days as they come.
        tablas.ponerTexto(tabla, extra::fecha,
                          "C6" + cifras(1 + numero * 12 / cuantas, 2) + cifras(1 + numero % 28, 2));
        tablas.ponerTexto(tabla, extra::cuenta, laCuenta);
        tablas.ponerTexto(tabla, extra::asiento, cifras(numero / 3, 6));
        tablas.ponerTexto(tabla, extra::descripcion, "Su factura núm. " + cifras(numero, 8));
        tablas.ponerTexto(tabla, extra::tipo, numero % 2 == 0 ? "1" : "2");
        tablas.ponerTexto(tabla, extra::importe, numero % 2 == 0 ? importe : "-" + importe);
        tablas.ponerTexto(tabla, extra::diario, "1");
        tablas.ponerTexto(tabla, extra::canal, "000");
        tablas.ponerTexto(tabla, extra::referencia, "F" + cifras(numero, 8));
        tablas.AnadirRegistro(tabla);
    }
};

void leerExtracto(benchmark::State& estado, Libro& (*libro)()) {
    link::Enlace& enlace = libro().enlace;
    for ([[maybe_unused]] auto _ : estado)
        enlace.LeerExtracto(Libro::cuenta);
    if (enlace.ContadorExtracto() != lineas) estado.SkipWithError("lines are missing");
    estado.SetItemsProcessed(estado.iterations() * lineas);
}
BENCHMARK_CAPTURE(leerExtracto, propio, Libro::propio)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(leerExtracto, compartido, Libro::compartido)->Unit(benchmark::kMillisecond);

void leerExtractoEx(benchmark::State& estado, Libro& (*libro)()) {
    link::Enlace& enlace = libro().enlace;
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto _ : estado)
        bytes = enlace.LeerExtractoEx(Libro::cuenta).size();
    if (bytes < lineas * std::size_t{60}) estado.SkipWithError("lines are missing");
    estado.SetItemsProcessed(estado.iterations() * lineas);
}
BENCHMARK_CAPTURE(leerExtractoEx, propio, Libro::propio)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(leerExtractoEx, compartido, Libro::compartido)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
