// The list at its largest: ten thousand copies from the names that the service gave to the painted grid, and
// from a click on a heading to the grid in its new order. Paints into memory; no display is needed.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QTemporaryDir>
#include <random>

#include "core/escritorio_desatendido.h"
#include "ui/apariencia.h"
#include "ui/rejilla.h"
#include "workflows/lista.h"
#include "workflows/montaje.h"

namespace {

using namespace tarvoline;

constexpr int copias = 10'000;

class RegistroMudo : public core::Registro {
  public:
    void info(std::string_view) override {}
    void aviso(std::string_view) override {}
    void error(std::string_view) override {}
};

// Names as the service lists them: description, date and time, extension.
std::vector<std::string> nombres() {
    std::mt19937 azar(1);
    const auto hasta = [&azar](unsigned tope) { return static_cast<unsigned>(azar() % tope); };
    std::vector<std::string> lista;
    for (int i = 0; i < copias; ++i) {
        char nombre[64];
        std::snprintf(nombre, sizeof nombre, "PANADERÍA NÚÑEZ %05u 20%02u-%02u-%02u  %02u %02u.ZIP",
                      hasta(100'000), hasta(25), 1 + hasta(12), 1 + hasta(28), hasta(24), hasta(60));
        lista.emplace_back(nombre);
    }
    return lista;
}

// The grid over the program's own routines, as the main window has it.
class Banco {
  public:
    Banco() : escritorio_(registro_), montaje_(escritorio_, registro_), fx1_(montaje_.vista().fx1, nullptr) {
        core::prepararTextos(montaje_.entorno());
        montaje_.estado().gInicio = true;  // names without asking the service for their sizes
        montaje_.vista().List1 = nombres();
        montaje_.vista().alCambiar = [this](core::Parte parte) {
            if (parte == core::Parte::rejilla) {
                fx1_.refrescar(true);
            }
        };
        fx1_.resize(1024, 700);
        imagen_ = QImage(fx1_.size(), QImage::Format_ARGB32_Premultiplied);
    }
    ~Banco() { montaje_.vista().alCambiar = {}; }

    workflows::Lista& lista() { return montaje_.flujos().lista(); }
    // Puts a size of its own into every row.
    void ponerTamanos() {
        auto& rejilla = montaje_.vista().fx1;
        std::mt19937 azar(2);
        for (int fila = 1; fila < rejilla.filas(); ++fila) {
            rejilla.ponerCelda(fila, workflows::columna_rejilla::ordenTamano, std::to_string(azar()));
        }
    }
    void pintar() {
        fx1_.render(&imagen_);
        benchmark::DoNotOptimize(imagen_.constBits());
    }

  private:
    RegistroMudo registro_;
    core::EscritorioDesatendido escritorio_;
    workflows::Montaje montaje_;
    ui::Rejilla fx1_;
    QImage imagen_;
};

void aparecer(benchmark::State& estado) {
    Banco banco;
    for ([[maybe_unused]] auto _ : estado) {
        banco.lista().LlenarGrid();
        banco.pintar();
    }
}
BENCHMARK(aparecer)->Unit(benchmark::kMillisecond);

// By name, date and size; each click turns the order around.
void ordenar(benchmark::State& estado) {
    Banco banco;
    banco.lista().LlenarGrid();
    banco.ponerTamanos();
    for ([[maybe_unused]] auto _ : estado) {
        banco.lista().Ordenar_Click(static_cast<int>(estado.range(0)));
        banco.pintar();
    }
}
BENCHMARK(ordenar)->DenseRange(0, 2)->ArgName("columna")->Unit(benchmark::kMillisecond);

// What scrolling costs: one picture of the grid.
void pintar(benchmark::State& estado) {
    Banco banco;
    banco.lista().LlenarGrid();
    for ([[maybe_unused]] auto _ : estado) {
        banco.pintar();
    }
}
BENCHMARK(pintar)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    const QTemporaryDir casa;
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "TMPDIR"}) {
        qputenv(variable, casa.path().toUtf8());
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication aplicacion(argc, argv);
    ui::vestir(aplicacion);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
