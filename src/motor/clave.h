// An entry of a key: its text and the record that it names. Entries are ordered by text, compared byte by
// byte as if filled with blanks, and equal texts by record.
#pragma once

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "motor/formato.h"
#include "motor/octetos.h"

namespace tarvoline::motor {

// One table's keys share one width, that of its longest key: what texts are filled to.
struct Clave {
    // Valid up to the width. Room for what a page full of nonsense could make of one entry.
    std::array<Octeto, 512> texto;
    std::uint32_t registro;

    void poner(std::string_view valor, unsigned ancho, std::uint32_t numero) {
        const std::size_t bytes = std::min<std::size_t>(valor.size(), ancho);
        std::memcpy(texto.data(), valor.data(), bytes);
        std::memset(texto.data() + bytes, ' ', ancho - bytes);
        registro = numero;
    }
    // Without the blanks at its end.
    std::string_view sinRelleno(unsigned ancho) const {
        while (ancho > 0 && texto[ancho - 1] == ' ')
            --ancho;
        return {reinterpret_cast<const char*>(texto.data()), ancho};
    }
};

// How many characters two texts share at their head.
inline unsigned comunes(const Octeto* una, const Octeto* otra, unsigned ancho) {
    unsigned i = 0;
    while (i < ancho && una[i] == otra[i])
        ++i;
    return i;
}

}  // namespace tarvoline::motor
