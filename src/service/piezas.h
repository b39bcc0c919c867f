// The piece engine: a file goes up or comes down in pieces of 256 KiB, one call a piece. It keeps no state of
// its own between runs; whoever calls it records the position of the next piece and decides when to stop.
//
// Upload pieces overlap: each is one byte longer than the step, and its last byte is the next piece's first.
// The service writes each at its position, so the overlap falls on itself. Positions count from 1 and are
// 32-bit.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/archivos.h"
#include "service/operaciones.h"

namespace tarvoline::service {

inline constexpr std::int32_t longitudPieza = 1 << 18;

// What the engine asks and tells while it works. All are optional but `detener`.
struct AvisosPiezas {
    std::function<bool()> detener;                            // true: end before the next piece
    std::function<void()> turno;                              // around every call
    std::function<void(std::int32_t posicion)> antesDePieza;  // the position is about to be sent: record it
    std::function<void(std::int32_t total, std::int32_t posicion)> avance;
};

struct ResultadoPiezas {
    std::string respuesta;  // what the service answered last; "" when nothing came
    bool detenido = false;
    int piezas = 0;  // calls that were sent
};

// Sends `ruta` under `nombre` from `posicion`. Throws soap::ErrorServicio, platform::ErrorArchivo,
// std::overflow_error (a file of 2 GiB or more) and std::length_error (a position within the last piece).
ResultadoPiezas EnviarPiezas(platform::SistemaArchivos& archivos, ClienteServicio& cliente,
                             const Identidad& quien, std::string_view ruta, std::string_view tipo,
                             std::string_view nombre, std::int32_t posicion, const AvisosPiezas& avisos);

// Receives `total` bytes of `nombre` into the open file. A failure of the service ends it; `respuesta` holds
// its text.
ResultadoPiezas RecibirPiezas(ClienteServicio& cliente, const Identidad& quien, std::string_view tipo,
                              std::string_view nombre, std::int32_t total, platform::Archivo& destino,
                              const AvisosPiezas& avisos);

}  // namespace tarvoline::service
