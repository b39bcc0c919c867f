// The head of a key file. The file begins with the places of two heads, 4096 bytes each; commits write them
// in turn. A head's core is the last 512 bytes of its place; the free pages, which concern writers only, end
// where it begins. One write puts down both, the core last: a write that breaks off leaves the older core,
// which then is not the newest. Each part has a check sum of its own. Positions in the core:
//
//    0  8  "QZCLAVES"
//    8  2  format version, 2
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
//   56  4  runs of free pages before the core
//   60  4  check sum of those runs and of the map before them
//   64 24  for each key, ten times: root page (4), its seal (8), entries (8), levels (1), zero (3)
//  508  4  check sum of the first 508 bytes
//
// The map has a bit for each of the first 16384 pages below the high-water mark, in words of 8 bytes, the
// lowest bit first: 1 is a free page. A run lies behind these, and is its first page (4) and the number of
// its pages (4). The file itself begins with the first twelve bytes of the core, never changed, so that it is
// known even when no head is.
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
inline constexpr std::size_t lugarNucleo = bytesCabecera - bytesNucleo;
// The first 16 bytes of a head's place are not its own: the file's beginning, and posicionDanno.
inline constexpr std::uint32_t paginasDelMapa = 16384;
inline constexpr std::size_t maxTramos = (lugarNucleo - 16 - paginasDelMapa / 8) / bytesTramo;
// Eight bytes that hold the file's identity once somebody has met damage: every later opening then knows.
inline constexpr std::uint64_t posicionDanno = bytesCabecera;

struct Raiz {
    Hijo hijo;
    std::uint64_t entradas = 0;
    std::uint8_t altura = 0;  // levels; 0: no page at all
};

struct Tramo {
    std::uint32_t pagina = 0;
    std::uint32_t cuantas = 0;
};

// The free pages that a head lists. The map may be shorter than the file: what it does not have is in use.
struct Huecos {
    std::vector<std::uint64_t> mapa;
    std::vector<Tramo> tramos;
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
    std::uint32_t sumaHuecos = 0;
    std::array<Raiz, maxClaves> raices{};

    unsigned lugar() const { return static_cast<unsigned>(numeroDe(sello) % 2); }
};

constexpr std::uint64_t posicionDeNucleo(unsigned lugar) {
    return lugar * bytesCabecera + lugarNucleo;
}

// Bytes of the map and the runs together.
std::size_t bytesDeHuecos(const Cabecera& cabecera);

// Writes the head as it ends its place, its free pages before it, with both check sums; tells where in the
// place it begins. `destino` has bytesCabecera.
std::size_t codificarCabecera(Cabecera& cabecera, const Huecos& huecos, Octeto* destino);
// What begins the file.
void ponerComienzo(Octeto* destino);
// Nothing when these 512 bytes are no sound head. `lugar`: 0 or 1, where they stand.
std::optional<Cabecera> descifrarCabecera(const Octeto* nucleo, unsigned lugar);
// Nothing when they are not the ones that the head speaks of, or could not be free pages.
std::optional<Huecos> descifrarHuecos(const Cabecera& cabecera, const Octeto* bytes);

enum class Origen {
    propio,   // begins as a key file of this format does
    antiguo,  // of an earlier version, to be made anew
    ajeno,    // something else, or of a later version
    en_cero,  // zeros only: what a power failure leaves of a file just made
};
// By the first 512 bytes of the file.
Origen origenDe(const Octeto* comienzo);

}  // namespace tarvoline::motor
