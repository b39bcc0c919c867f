// Changes one key's tree within a command: an entry comes, an entry goes. Pages on the way become the
// command's own; full ones are parted, thin ones joined with a neighbour.
#pragma once

#include "motor/arbol.h"
#include "motor/borrador_pagina.h"
#include "motor/escritura.h"

namespace tarvoline::motor {

class EdicionArbol {
  public:
    // Key `clave`, 1-based. Members throw Danno.
    EdicionArbol(Escritura& escritura, unsigned clave);

    // False when the entry stands there already; nothing changes then.
    bool insertar(const Clave& entrada);
    // False when there is no such entry.
    bool quitar(const Clave& entrada);

  private:
    VistaPagina vista(unsigned paso) const { return {camino_[paso].pagina->datos.data(), ancho_}; }
    Pagina& propia(unsigned paso) { return const_cast<Pagina&>(*camino_[paso].pagina); }
    unsigned hoja() const { return raiz_.altura - 1U; }
    // Down to where the entry stands or would; true when it stands there.
    bool bajar(const Clave& entrada);
    void apropiarCamino();
    void ponerHijo(unsigned paso, const Lugar& lugar, const Hijo& hijo);
    void empezar(const Clave& entrada);
    bool enUltimaRama() const;
    void partir(unsigned paso, bool alFinal);
    void alzarRaiz(const Clave& separador, const Hijo& derecha);
    void adelgazar(unsigned paso);
    void quitarHijo(unsigned paso);
    bool juntar(unsigned paso);
    void bajarRaiz();

    Escritura& escritura_;
    Raiz& raiz_;
    unsigned clave_;
    unsigned ancho_;
    Camino camino_;
    BorradorPagina borrador_;  // the page being changed
};

}  // namespace tarvoline::motor
