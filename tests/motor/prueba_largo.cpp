// The same as prueba_diferencial, a million commands.
#include "motor/diferencial.h"

namespace tarvoline::pruebas {
namespace {

TEST_P(Diferencial, contestaComoElModelo) {
    trabajar(GetParam(), semillaNueva());
}

constexpr Forma formas[] = {
    {"corta", 4, 1, 3, 300000, false},
    {"tipica", 30, 4, 8, 500000, false},
    {"larguisima", 255, 10, 16, 50000, false},
    {"muyRepetida", 60, 3, 2, 150000, false},
};
INSTANTIATE_TEST_SUITE_P(Formas, Diferencial, testing::ValuesIn(formas),
                         [](const auto& caso) { return caso.param.nombre; });

}  // namespace
}  // namespace tarvoline::pruebas
