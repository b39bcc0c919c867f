// A page of the list that takes the free pages for which the head has no room: the next such page (page 4,
// seal 8), then runs as in the head (first page 4, number 4); the page's header counts them as entries.
#pragma once

#include <vector>

#include "motor/cabecera.h"
#include "motor/pagina.h"

namespace tarvoline::motor {

inline constexpr std::size_t lugarTramosLista = bytesEncabezado + bytesHijo;
inline constexpr std::size_t maxTramosLista = (bytesPagina - lugarTramosLista) / bytesTramo;

struct ListaLibres {
    Hijo siguiente;
    std::vector<Tramo> tramos;
};

// Throws Danno when the page says of itself what cannot be.
ListaLibres leerLista(const Pagina& pagina);
// All of the page but its check sum.
void ponerLista(const ListaLibres& lista, Sello sello, Pagina& pagina);

}  // namespace tarvoline::motor
