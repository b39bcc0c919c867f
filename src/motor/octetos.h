// Numbers as the key files hold them: little-endian, byte by byte, at a place that the caller has checked.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tarvoline::motor {

using Octeto = unsigned char;

template <typename Entero>
Entero leerEntero(const Octeto* sitio) {
    if constexpr (std::endian::native == std::endian::little) {
        Entero valor;
        std::memcpy(&valor, sitio, sizeof valor);
        return valor;
    } else {
        std::uint64_t valor = 0;
        for (std::size_t i = 0; i < sizeof(Entero); ++i)
            valor |= std::uint64_t{sitio[i]} << (8 * i);
        return static_cast<Entero>(valor);
    }
}

template <typename Entero>
void ponerEntero(Octeto* sitio, Entero valor) {
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(sitio, &valor, sizeof valor);
    } else {
        for (std::size_t i = 0; i < sizeof(Entero); ++i)
            sitio[i] = static_cast<Octeto>(static_cast<std::uint64_t>(valor) >> (8 * i));
    }
}

// Seven bits a byte, lowest first, the top bit set in all but the last.
inline constexpr std::size_t bytesMayorVariable = 5;

inline Octeto* ponerVariable(Octeto* sitio, std::uint32_t valor) {
    for (; valor >= 0x80; valor >>= 7U)
        *sitio++ = static_cast<Octeto>(valor | 0x80U);
    *sitio++ = static_cast<Octeto>(valor);
    return sitio;
}

// Ends after five bytes whatever they are.
inline const Octeto* leerVariable(const Octeto* sitio, std::uint32_t& valor) {
    valor = 0;
    for (unsigned corrimiento = 0; corrimiento < 35; corrimiento += 7) {
        const Octeto uno = *sitio++;
        valor |= static_cast<std::uint32_t>(std::uint64_t{uno & 0x7FU} << corrimiento);
        if (uno < 0x80) break;
    }
    return sitio;
}

// A 64-bit sum that no accident passes by, of the speed of memory; no defence against intent. `semilla` sets
// equal bytes of different places apart.
std::uint64_t sumaDeControl(const Octeto* datos, std::size_t bytes, std::uint64_t semilla);

}  // namespace tarvoline::motor
