// Many entries in one commit, under record numbers that the caller gives: how a key file is filled anew.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "motor/archivo_claves.h"

namespace tarvoline::motor {

struct EntradaNueva {
    std::string texto;
    std::uint32_t registro = 0;
};
// By key; key n at n - 1.
using LoteEntradas = std::vector<std::vector<EntradaNueva>>;

// Puts all of them in, raises the record counter to `contador` if it is below, and empties the lists of
// `lote`. All of it or nothing. Throws ErrorMotor: an entry that is there already, another number of keys
// than the file's, a text that is too long; and whatever keeps the file from being written.
void cargarLote(ArchivoClaves& archivo, LoteEntradas& lote, std::uint32_t contador);

}  // namespace tarvoline::motor
