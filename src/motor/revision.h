// Looks through a whole key file: what a tool tells about it, and what tests hold the engine to.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "motor/archivo_claves.h"

namespace tarvoline::motor {

struct Revision {
    // Empty when the file is sound: every page reached once and sound, keys in order and within what their
    // parents say, as many entries as the head counts, no page both used and free, none lost.
    std::string fallo;
    std::uint64_t paginasUsadas = 0;
    std::uint64_t paginasLibres = 0;
    // Bytes in use on the pages of the trees.
    std::uint64_t bytesUsados = 0;
};

// Called for every entry of every key, in order: key number (1-based), text without the blanks at its end,
// record.
using PorEntrada = std::function<void(unsigned clave, std::string_view texto, std::uint32_t registro)>;

// Holds the turn shared meanwhile.
Revision revisar(ArchivoClaves& archivo, const PorEntrada& porEntrada = {});

}  // namespace tarvoline::motor
