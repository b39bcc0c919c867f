// Numbers as the files hold them: little-endian, encoded byte by byte.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

namespace tarvoline::data {

namespace detalle {
template <std::size_t Bytes>
using Entero =
    std::conditional_t<Bytes == 1, std::uint8_t,
                       std::conditional_t<Bytes == 2, std::uint16_t,
                                          std::conditional_t<Bytes == 4, std::uint32_t, std::uint64_t>>>;
}  // namespace detalle

// `bytes` holds at least sizeof(T) bytes.
template <typename T>
T leerNumero(std::span<const std::byte> bytes) {
    using Crudo = detalle::Entero<sizeof(T)>;
    std::uint64_t crudo = 0;
    for (std::size_t i = sizeof(T); i-- > 0;) {
        crudo = crudo << 8U | std::to_integer<std::uint64_t>(bytes[i]);
    }
    return std::bit_cast<T>(static_cast<Crudo>(crudo));
}

template <typename T>
void ponerNumero(std::span<std::byte> bytes, T valor) {
    auto crudo = static_cast<std::uint64_t>(std::bit_cast<detalle::Entero<sizeof(T)>>(valor));
    for (std::size_t i = 0; i < sizeof(T); ++i) {
        bytes[i] = static_cast<std::byte>(crudo & 0xFFU);
        crudo >>= 8U;
    }
}

}  // namespace tarvoline::data
