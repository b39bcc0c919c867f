// Reads one key's tree: finds entries, and walks from one to the next.
#pragma once

#include "motor/archivo_claves.h"

namespace tarvoline::motor {

// Where a search has come to. Valid during the command that made it.
struct Sitio {
    Clave clave;
    // Where the entry stands, for who goes on from it while the head is the same.
    Hijo hoja;
    Lugar lugar;
    Sello cabecera = 0;
};

// The pages from the root down to a leaf, and the place in each.
class Camino {
  public:
    struct Paso {
        const Pagina* pagina = nullptr;
        Hijo hijo;
        Lugar lugar;
    };
    Paso& operator[](std::size_t i) { return pasos_[i]; }
    const Paso& operator[](std::size_t i) const { return pasos_[i]; }

  private:
    std::array<Paso, maxAltura> pasos_;
};

class Arbol {
  public:
    // Key `clave`, 1-based, under the head in force. Members throw Danno.
    Arbol(ArchivoClaves& archivo, unsigned clave);

    // False when there is no such entry; `sitio` is then worth nothing.
    bool primera(Sitio& sitio);
    bool ultima(Sitio& sitio);
    // The first entry that is not below `buscada`, or above it.
    bool desde(const Clave& buscada, Cota cota, Sitio& sitio);
    // The last entry below `buscada`.
    bool antesDe(const Clave& buscada, Sitio& sitio);
    enum class Hallazgo { nada, igual, entre, antes, despues };
    // The first entry that is not below `buscada`, if it agrees with it in the first `letras` characters;
    // else the last one below it, or the very first.
    Hallazgo situar(const Clave& buscada, std::size_t letras, Sitio& sitio);
    // The entry behind the one of `sitio`, which this same head's tree has given.
    bool trasSitio(const Sitio& sitio, Sitio& siguiente);

  private:
    VistaPagina vista(const Pagina& pagina) const { return {pagina.datos.data(), archivo_.ancho()}; }
    const Pagina& bajarA(std::size_t paso, const Hijo& hijo);
    void bajar(const Clave& buscada, Cota cota);
    bool hojaSiguiente();
    bool hojaAnterior();
    bool tomar(Sitio& sitio);
    void leerEn(const Lugar& lugar, Sitio& sitio);

    ArchivoClaves& archivo_;
    const Raiz& raiz_;
    unsigned clave_;
    unsigned hoja_;  // the leaf's step; the height less 1
    Camino camino_;
};

}  // namespace tarvoline::motor
