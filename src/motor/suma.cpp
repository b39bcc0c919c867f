// The check sum of pages and heads: eight independent lanes, each a step "exclusive or, multiply, rotate" for
// every 64 bytes, folded at the end. The steps are spelled out in docs/formats.md, as files outlive
// compilers.
#include <array>

#include "motor/octetos.h"

namespace tarvoline::motor {

namespace {

constexpr std::uint64_t impar1 = 0x9E3779B97F4A7C15U;
constexpr std::uint64_t impar2 = 0xC2B2AE3D27D4EB4FU;

// One to one for every lane and every word: what changes a word changes the lane.
std::uint64_t mezclar(std::uint64_t carril, std::uint64_t palabra) {
    return std::rotl((carril ^ palabra) * impar1, 29);
}

}  // namespace

std::uint64_t sumaDeControl(const Octeto* datos, std::size_t bytes, std::uint64_t semilla) {
    constexpr std::size_t carrilesEnTotal = 8;
    constexpr std::size_t paso = 8 * carrilesEnTotal;
    std::array<std::uint64_t, carrilesEnTotal> carriles;
    for (std::size_t i = 0; i < carrilesEnTotal; ++i)
        carriles[i] = semilla + (bytes + i) * impar2;
    const Octeto* const fin = datos + bytes;
    for (; static_cast<std::size_t>(fin - datos) >= paso; datos += paso) {
        for (std::size_t i = 0; i < carrilesEnTotal; ++i)
            carriles[i] = mezclar(carriles[i], leerEntero<std::uint64_t>(datos + 8 * i));
    }
    // What is left, and then zeros, fill one more step.
    std::array<Octeto, paso> resto{};
    std::memcpy(resto.data(), datos, static_cast<std::size_t>(fin - datos));
    std::uint64_t suma = semilla;
    for (std::size_t i = 0; i < carrilesEnTotal; ++i)
        suma = mezclar(suma, mezclar(carriles[i], leerEntero<std::uint64_t>(resto.data() + 8 * i)) * impar2);
    return suma ^ (suma >> 32U);
}

}  // namespace tarvoline::motor
