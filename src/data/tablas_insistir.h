// The retry rule of the record layer (tablas.h), for the sources of Tablas alone.
#pragma once

#include "data/tablas.h"

namespace tarvoline::data {

// Runs `paso` on `archivo` until it goes through. `rango` and `tipo` are what another handle's lock would
// keep from it.
template <typename Paso>
void Tablas::insistir(platform::Archivo& archivo, platform::Rango rango, platform::TipoBloqueo tipo,
                      Paso&& paso) {
    for (int fallos = 1;; ++fallos) {
        try {
            paso();
            return;
        } catch (const platform::ErrorArchivo&) {
            trasFallo(fallos, archivo, rango, tipo);
        }
    }
}

}  // namespace tarvoline::data
