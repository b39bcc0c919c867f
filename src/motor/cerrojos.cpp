#include "motor/cerrojos.h"

#include <exception>
#include <thread>

namespace tarvoline::motor {

namespace {

using platform::Archivo;
using platform::Rango;
using platform::TipoBloqueo;

// A turn lasts some microseconds, so the first tries follow each other at once; then the wait is slept.
constexpr int intentosSeguidos = 40;
constexpr std::chrono::milliseconds esperaDormida{1000};

void esperarByte(Archivo& archivo, std::uint64_t byte, TipoBloqueo tipo,
                 const std::function<void()>& mientras = {}) {
    const Rango rango{byte, 1};
    if (mientras) {
        if (archivo.bloquear(rango, tipo)) return;
        mientras();
    }
    for (int intento = 0; intento < intentosSeguidos; ++intento) {
        if (archivo.bloquear(rango, tipo)) return;
        std::this_thread::yield();
    }
    while (!archivo.bloquear(rango, tipo, esperaDormida)) {
    }
}

// A lock that cannot be given back ends with its handle; the command that held it has its answer already.
bool soltar(Archivo& archivo, std::uint64_t byte) {
    try {
        archivo.desbloquear({byte, 1});
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

Turno::Turno(Archivo& archivo, TipoBloqueo tipo, bool conPuerta, const std::function<void()>& mientras)
    : archivo_(archivo) {
    if (!conPuerta) {
        esperarByte(archivo, byteTurno, tipo, mientras);
        return;
    }
    esperarByte(archivo, bytePuerta, tipo);
    try {
        esperarByte(archivo, byteTurno, tipo);
    } catch (...) {
        soltar(archivo, bytePuerta);
        throw;
    }
    soltar(archivo, bytePuerta);
}

Turno::~Turno() {
    soltar(archivo_, byteTurno);
}

CerrojoInsercion::CerrojoInsercion(Archivo& datos, TipoBloqueo tipo, std::chrono::milliseconds espera)
    : datos_(datos), tomado_(datos.bloquear({byteInsertando, 1}, tipo, espera)) {}

CerrojoInsercion::~CerrojoInsercion() {
    if (tomado_) soltar(datos_, byteInsertando);
}

}  // namespace tarvoline::motor
