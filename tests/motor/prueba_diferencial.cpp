#include "motor/diferencial.h"

namespace tarvoline::pruebas {
namespace {

TEST_P(Diferencial, contestaComoElModelo) {
    trabajar(GetParam(), semillaNueva());
}

constexpr Forma formas[] = {
    {"corta", 4, 1, 3, 6000, false},
    {"tipica", 30, 4, 8, 6000, false},
    {"muyRepetida", 12, 3, 1, 6000, false},
    {"larguisima", 255, 10, 16, 1500, false},
    {"unaLetra", 1, 2, 16, 3000, false},
    {"enRed", 20, 2, 6, 3000, true},
    {"trasElMapa", 255, 10, 16, 6000, false, 2000},
};
INSTANTIATE_TEST_SUITE_P(Formas, Diferencial, testing::ValuesIn(formas),
                         [](const auto& caso) { return caso.param.nombre; });

}  // namespace
}  // namespace tarvoline::pruebas
