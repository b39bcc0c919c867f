// The piece engine: a file goes up or comes down in pieces of 256 KiB, one call a piece. It keeps no state of
// its own between runs; whoever calls it records the position of the next piece and decides when to stop.
//
// Upload, for a file of L bytes (positions count from 1 and are 32-bit; c is the step, 262144 at first):
//
//   1. L below c: one call at position 1 with the L bytes and one zero byte behind them. Done.
//   2. A piece has c + 1 bytes from the position on; what lies behind the end of the file reads as zeros.
//   3. When position + c is L the piece just sent was the last. Else the position moves on by c, and where
//      position + c would then pass L the step becomes L - position.
//
// So pieces are one byte longer than the step, and the last byte of each is the first of the next; the
// service writes each at its position and the overlap falls on itself. Two cases lead the step below zero and
// end in std::length_error: a file of exactly 262144 bytes, and a start within the last piece, which sends
// one padded piece first.
//
// Download, for T bytes: pieces of the lesser of 262144 and what is left, without overlap. A file of 0 bytes
// takes one call too.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/archivos.h"
#include "service/operaciones.h"

namespace tarvoline::service {

inline constexpr std::int32_t longitudPieza = 1 << 18;

// What the engine asks and tells while it works. Each may be empty.
struct AvisosPiezas {
    std::function<bool()> detener;  // true: end before the next piece
    std::function<void()> turno;    // around every call
    // The piece at `posicion` comes next: record it. Not called for a file that goes up in one call, nor
    // while receiving.
    std::function<void(std::int32_t posicion)> antesDePieza;
    // A piece is through; the next one starts at `posicion`.
    std::function<void(std::int32_t posicion)> avance;
};

// How far it came. It is filled as the work goes on, so it also holds when an error ends it.
struct ResultadoPiezas {
    std::string respuesta;  // what the service answered last; "" when nothing came
    bool detenido = false;
    bool completo = false;  // the last piece is through, and none was refused or short
    int piezas = 0;         // calls of Backup or Restore that were begun
};

struct Envio {
    std::string ruta;    // local file
    std::string tipo;    // kind
    std::string nombre;  // under which it is stored, unescaped
    std::int32_t longitud = 0;
    std::int32_t posicion = 1;  // of the first piece
};

// Sends a file. A failure that the service reports ends it; `resultado.respuesta` holds its text. The local
// file is open only while a piece is read. Throws soap::ErrorServicio, platform::ErrorArchivo and
// std::length_error (see above), and what the notices throw.
void EnviarPiezas(platform::SistemaArchivos& archivos, ClienteServicio& cliente, const Identidad& quien,
                  const Envio& envio, const AvisosPiezas& avisos, ResultadoPiezas& resultado);

struct Recepcion {
    std::string tipo;
    std::string nombre;
    std::int32_t total = 0;  // bytes, as FileSize gave them
};

// Receives a file into `destino`, which is open for writing; each piece is written as it came, at its
// position. Ends and throws as EnviarPiezas does, but for std::length_error.
void RecibirPiezas(ClienteServicio& cliente, const Identidad& quien, const Recepcion& recepcion,
                   platform::Archivo& destino, const AvisosPiezas& avisos, ResultadoPiezas& resultado);

}  // namespace tarvoline::service
