#include "platform/posix/quietud.h"

#include <cstdint>

namespace tarvoline::platform::posix {

namespace {

constexpr std::int64_t milisegundo = 1'000'000;
constexpr std::int64_t segundo = 1000 * milisegundo;

std::int64_t nanosegundos(const timespec& hora) {
    return std::int64_t{hora.tv_sec} * segundo + hora.tv_nsec;
}

bool pocoTiempo(const timespec& antes, const timespec& despues) {
    const std::int64_t paso = nanosegundos(despues) - nanosegundos(antes);
    return paso >= 0 && paso < 50 * milisegundo;
}

}  // namespace

// The coarse clocks are those that files are dated by, and cost no call to the system.
Momento Momento::ahora() {
    Momento uno;
    ::clock_gettime(CLOCK_REALTIME_COARSE, &uno.fecha);
    ::clock_gettime(CLOCK_MONOTONIC_COARSE, &uno.corrido);
    return uno;
}

// Little time by both clocks: nobody has set the date back by more than that, so a change in between bears a
// date hardly below that of `antes`, or its whole second where the file system keeps no parts of one.
bool quietoEntre(const Momento& antes, const Momento& despues, const timespec& cambio) {
    const std::int64_t margen = cambio.tv_nsec == 0 ? segundo + 100 * milisegundo : 100 * milisegundo;
    return pocoTiempo(antes.fecha, despues.fecha) && pocoTiempo(antes.corrido, despues.corrido) &&
           nanosegundos(cambio) < nanosegundos(antes.fecha) - margen;
}

}  // namespace tarvoline::platform::posix
