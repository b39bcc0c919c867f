// The check sum of pages and heads: four independent lanes of multiply and rotate, folded at the end. The
// steps are spelled out in docs/formats.md, as files outlive compilers.
#include <array>

#include "motor/octetos.h"

namespace tarvoline::motor {

namespace {

constexpr std::uint64_t impar1 = 0x9E3779B97F4A7C15U;
constexpr std::uint64_t impar2 = 0xC2B2AE3D27D4EB4FU;

std::uint64_t mezclar(std::uint64_t carril, std::uint64_t palabra) {
    return std::rotl((carril ^ palabra) * impar1, 29) * impar2;
}

}  // namespace

std::uint64_t sumaDeControl(const Octeto* datos, std::size_t bytes, std::uint64_t semilla) {
    std::array<std::uint64_t, 4> carriles{semilla ^ bytes, semilla + impar1, semilla + impar2,
                                          semilla ^ impar2};
    const Octeto* const fin = datos + bytes;
    for (; fin - datos >= 32; datos += 32) {
        for (std::size_t i = 0; i < 4; ++i)
            carriles[i] = mezclar(carriles[i], leerEntero<std::uint64_t>(datos + 8 * i));
    }
    // What is left, and then zeros, fill one more step of 32 bytes.
    std::array<Octeto, 32> resto{};
    std::memcpy(resto.data(), datos, static_cast<std::size_t>(fin - datos));
    std::uint64_t suma = semilla;
    for (std::size_t i = 0; i < 4; ++i)
        suma = mezclar(suma, mezclar(carriles[i], leerEntero<std::uint64_t>(resto.data() + 8 * i)));
    return suma ^ (suma >> 32U);
}

}  // namespace tarvoline::motor
