// The head of a key file. Two of them begin the file, each in 4096 bytes; commits write them in turn. The
// first 512 bytes are what readers need, the runs of free pages behind them concern writers only, so each
// part has a check sum of its own.
//
//    0  8  "QZCLAVES"
//    8  2  format version, 1
//   10  2  bytes of a page, 2048
//   12  2  characters of the longest key
//   14  1  number of keys
//   15  1  zero
//   16  8  identity of the file, drawn at random when it is made
//   24  8  seal: number of the commit * 2^24 + random bits; the "sequence word"
//   32  4  record counter: the highest record number ever given
//   36  4  high-water mark: pages from here on have never been used
//   40 12  head of the list of free pages: page (4), seal (8)
//   52  4  free pages on that list
//   56  4  runs of free pages behind the first 512 bytes
//   60  4  check sum of those runs
//   64 24  for each key, ten times: root page (4), its seal (8), entries (8), levels (1), zero (3)
//  508  4  check sum of the first 508 bytes
//  512  8  for each run: its first page (4), number of pages (4)
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "motor/formato.h"
#include "motor/octetos.h"

namespace tarvoline::motor {

inline constexpr std::size_t bytesNucleo = 512;
inline constexpr std::size_t lugarSello = 24;
inline constexpr std::size_t bytesTramo = 8;
// The last 16 bytes of a head's place are not its own; see posicionDanno.
inline constexpr std::size_t maxTramos = (bytesCabecera - bytesNucleo - 16) / bytesTramo;
// Eight bytes that hold the file's identity once somebody has met damage: every later opening then knows.
inline constexpr std::uint64_t posicionDanno = bytesCabecera - 8;

struct Raiz {
    Hijo hijo;
    std::uint64_t entradas = 0;
    std::uint8_t altura = 0;  // levels; 0: no page at all
};

struct Tramo {
    std::uint32_t pagina = 0;
    std::uint32_t cuantas = 0;
};

struct Cabecera {
    std::uint16_t longitud = 0;
    std::uint8_t claves = 0;
    std::uint64_t archivo = 0;
    Sello sello = 0;
    std::uint32_t contador = 0;
    std::uint32_t marca = primeraPagina;
    Hijo lista;
    std::uint32_t enLista = 0;
    std::uint32_t tramos = 0;
    std::uint32_t sumaTramos = 0;
    std::array<Raiz, maxClaves> raices{};

    unsigned lugar() const { return static_cast<unsigned>(numeroDe(sello) % 2); }
};

constexpr std::uint64_t posicionDeCabecera(unsigned lugar) {
    return lugar * bytesCabecera;
}

// Writes the head, its runs behind it, and both check sums; tells how many bytes. `destino` has
// bytesCabecera.
std::size_t codificarCabecera(Cabecera& cabecera, const std::vector<Tramo>& tramos, Octeto* destino);
// Nothing when these 512 bytes are no sound head. `lugar`: 0 or 1, where they stand.
std::optional<Cabecera> descifrarCabecera(const Octeto* nucleo, unsigned lugar);
// Nothing when they are not the runs that the head speaks of, or could not be free pages.
std::optional<std::vector<Tramo>> descifrarTramos(const Cabecera& cabecera, const Octeto* bytes);

enum class Origen {
    propio,   // begins as a key file of this format does
    ajeno,    // something else, or of a later version
    en_cero,  // zeros only: what a power failure leaves of a file just made
};
Origen origenDe(const Octeto* nucleo);

}  // namespace tarvoline::motor
