// A page being changed, in a buffer of twice its size: it may overflow, and is then parted in two.
#pragma once

#include <memory>

#include "motor/pagina.h"

namespace tarvoline::motor {

class BorradorPagina {
  public:
    explicit BorradorPagina(unsigned ancho) : ancho_(ancho) {}

    void vaciar(unsigned nivel, unsigned clave);
    void cargar(const Pagina& pagina);
    // The page as it is here, but for check sum and seal, which are the commit's affair. It must fit.
    void descargar(Pagina& pagina) const;

    VistaPagina vista() const { return {datos_.data(), ancho_}; }
    bool cabe() const { return vista().usados() <= bytesPagina; }

    // `lugar` comes from a search in this very page. `hijo` counts in inner pages only.
    void insertar(const Lugar& lugar, const Clave& clave, const Hijo& hijo = {});
    void quitar(const Lugar& lugar);
    void ponerHijo(const Lugar& lugar, const Hijo& hijo);
    // Appends an entry that lies behind all others; in a block of its own, or in the last one.
    void anadir(const Clave& clave, const Hijo& hijo, bool bloqueNuevo);
    // Appends the other page's entries, all of which lie behind these; what it is that its first entry means
    // in an inner page, `primera` says.
    void anadirPagina(const VistaPagina& otra, const Clave* primera);
    // Moves the upper part to `derecha`: half of the bytes, or only the last block when `alFinal`.
    // `separador` is then above all entries here and not above any there. Blocks stay what they are, so that
    // both parts fit whatever the keys.
    void partir(BorradorPagina& derecha, bool alFinal, Clave& separador);

  private:
    // Blocks longer than this are parted. Short ones cost room, long ones time.
    static constexpr unsigned mayorBloque = 20;

    void reemplazar(unsigned desde, unsigned quita, const Octeto* pone, unsigned bytes, unsigned bloque);
    void ponerUsados(unsigned usados) { ponerEntero(datos_.data() + 4, static_cast<std::uint16_t>(usados)); }
    void sumarEntradas(int cuantas);
    void insertarBloque(unsigned bloque, unsigned posicion);
    void quitarBloque(unsigned bloque);
    void partirBloque(unsigned bloque);
    Octeto* codificar(Octeto* sitio, unsigned comun, const Clave& clave, const Hijo& hijo) const;
    unsigned corteDe(bool alFinal) const;
    void acortarSeparador(const Clave& izquierda, Clave& separador) const;

    static constexpr std::size_t margen = 3 * mayorEntrada;
    std::array<Octeto, 2 * bytesPagina + margen> datos_;
    unsigned ancho_;
    Clave ultima_;  // the last entry that anadir() has written
};

}  // namespace tarvoline::motor
