// A page of a tree: its entries in order, front-coded. Each entry stores how many characters it shares with
// the one before it, and the rest without the blanks at its end; the first of each block of a few entries
// shares none, and a table at the end of the page tells where blocks begin, so a search halves its way to a
// block and walks only that.
//
//   0  4  check sum of what follows, up to the page's used end
//   4  2  bytes used
//   6  1  level: 0 a leaf, above it inner pages, 255 a list of free pages
//   7  1  key, 1-based
//   8  8  seal of the commit that wrote it
//  16  2  entries
//  18  2  blocks
//  20     entries: shared (1), length (1), characters, record (1-5, variable); in inner pages the child
//  follows:
//         its page (4) and seal (8). The table of blocks (2 each) ends the used part.
//
// An inner page's entry i leads to what is not below it and below entry i + 1; its entry 0 is never compared.
#pragma once

#include <array>
#include <optional>

#include "motor/clave.h"
#include "motor/formato.h"
#include "motor/octetos.h"

namespace tarvoline::motor {

inline constexpr std::size_t bytesEncabezado = 20;
inline constexpr std::size_t bytesBloque = 2;  // of the table of restart points
inline constexpr std::uint8_t nivelLibres = 255;
inline constexpr std::size_t bytesHijo = 12;
// An entry of the greatest size, header and child included; what is read at a page's last byte ends within.
inline constexpr std::size_t mayorEntrada = 2 + 255 + bytesMayorVariable + bytesHijo;

// The copy of a page in memory. The bytes behind the used ones are there to be read, not to mean anything.
struct Pagina {
    alignas(64) std::array<Octeto, bytesPagina + 320> datos;
};
static_assert(sizeof(Pagina::datos) >= bytesPagina + mayorEntrada);

enum class Cota {
    inferior,  // first entry that is not below the one sought
    superior,  // first entry above it
};

// A place between or at entries of a page: `posicion` is where the entry begins, and may be the end of
// `bloque`.
struct Lugar {
    unsigned bloque = 0;
    unsigned posicion = 0;
};

struct Entrada {
    unsigned comun = 0;
    unsigned largo = 0;
    const Octeto* resto = nullptr;
    std::uint32_t registro = 0;
    const Octeto* hijo = nullptr;  // where a child would stand
    unsigned fin = 0;              // position behind the entry
};

// Reads a page; owns nothing. `ancho` is the file's width. Whatever the bytes are, reads stay within the
// copy.
class VistaPagina {
  public:
    VistaPagina(const Octeto* datos, unsigned ancho) : p_(datos), ancho_(ancho) {}

    unsigned usados() const { return leerEntero<std::uint16_t>(p_ + 4); }
    unsigned nivel() const { return p_[6]; }
    unsigned clave() const { return p_[7]; }
    Sello sello() const { return leerEntero<Sello>(p_ + 8); }
    unsigned entradas() const { return leerEntero<std::uint16_t>(p_ + 16); }
    unsigned bloques() const { return leerEntero<std::uint16_t>(p_ + 18); }
    unsigned finEntradas() const { return usados() - 2 * bloques(); }
    unsigned inicioDe(unsigned bloque) const;
    unsigned finDe(unsigned bloque) const;
    // The header's numbers fit each other; what every other member relies on.
    bool encabezadoSano() const;
    const Octeto* datos() const { return p_; }

    Entrada entradaEn(unsigned posicion) const;
    // The entry that begins a block.
    Entrada cabezaDe(unsigned bloque) const {
        Entrada entrada = entradaEn(inicioDe(bloque));
        entrada.comun = 0;
        return entrada;
    }
    // The place of the bound. `previa` becomes where the entry before it begins, in the same block; in an
    // inner page there always is one.
    Lugar buscar(const Clave& buscada, Cota cota, unsigned& previa) const;
    Lugar primero() const { return {0, inicioDe(0)}; }
    Lugar final() const;  // behind the last entry
    // True when no entry follows in this page.
    bool alFinal(const Lugar& lugar) const { return lugar.posicion >= finEntradas(); }
    // From the end of a block to the entry that begins the next one.
    Lugar conEntrada(const Lugar& lugar) const;
    Lugar siguiente(const Lugar& lugar) const;
    std::optional<Lugar> anterior(const Lugar& lugar) const;
    void leerClave(const Lugar& lugar, Clave& salida) const;
    // The entry before the place; the place is not its block's beginning.
    void leerPrevia(const Lugar& lugar, Clave& salida) const;
    // Goes on from the entry before it, which `texto` still holds.
    void seguirClave(const Entrada& entrada, Clave& salida) const;
    Hijo hijoEn(const Lugar& lugar) const;
    unsigned bytesDeHijo() const { return nivel() > 0 ? static_cast<unsigned>(bytesHijo) : 0; }

  private:
    bool segundaAntes(unsigned posicion, const Clave& buscada, Cota cota, unsigned& iguales) const;
    int comparar(const Entrada& entrada, const Clave& buscada, Cota cota, unsigned& iguales) const;

    const Octeto* p_;
    unsigned ancho_;
};

inline unsigned VistaPagina::inicioDe(unsigned bloque) const {
    const unsigned sitio = leerEntero<std::uint16_t>(p_ + finEntradas() + bytesBloque * bloque);
    return std::clamp(sitio, static_cast<unsigned>(bytesEncabezado), finEntradas());
}

inline unsigned VistaPagina::finDe(unsigned bloque) const {
    return bloque + 1 < bloques() ? inicioDe(bloque + 1) : finEntradas();
}

inline Entrada VistaPagina::entradaEn(unsigned posicion) const {
    const Octeto* sitio = p_ + posicion;
    Entrada entrada;
    entrada.comun = sitio[0];
    entrada.largo = sitio[1];
    entrada.resto = sitio + 2;
    entrada.hijo = leerVariable(entrada.resto + entrada.largo, entrada.registro);
    entrada.fin = static_cast<unsigned>(entrada.hijo - p_) + bytesDeHijo();
    return entrada;
}

std::uint32_t sumaDePagina(const Octeto* pagina, std::uint32_t numero, std::uint64_t archivo);

}  // namespace tarvoline::motor
