// Sizes and places of the key file (.QZC); docs/formats.md shows them as tables with an example.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tarvoline::motor {

inline constexpr std::size_t bytesPagina = 2048;
inline constexpr std::size_t bytesCabecera = 4096;  // of each of the two heads, which begin the file
inline constexpr std::uint32_t primeraPagina = 2 * bytesCabecera / bytesPagina;

inline constexpr unsigned maxClaves = 10;
inline constexpr unsigned maxLongitud = 255;  // characters of the longest key
inline constexpr unsigned maxAltura = 16;     // levels of a tree

// A seal says who wrote a page or a head: the commit's number, and below it bits drawn at random by the
// writer, so that two who write the same number (one of them died before its head was written) do not write
// the same seal.
using Sello = std::uint64_t;
inline constexpr unsigned bitsAzar = 24;

constexpr std::uint64_t numeroDe(Sello sello) {
    return sello >> bitsAzar;
}

// A page as its parent names it. Page 0 is the first head's place, so it stands for "none".
struct Hijo {
    std::uint32_t pagina = 0;
    Sello sello = 0;
    bool operator==(const Hijo&) const = default;
};

constexpr std::uint64_t posicionDePagina(std::uint32_t pagina) {
    return std::uint64_t{pagina} * bytesPagina;
}

}  // namespace tarvoline::motor
