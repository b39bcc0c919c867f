// A key file made anew from the records of its table.
//
// Who does it holds the data file's "inserting" byte exclusively, so nobody inserts meanwhile and a second
// one who found the same waits, looks again, and finds the work done. Nobody waits for that byte with the key
// file open: creating it wants it alone. Record numbers are those of the places: a place without a living
// record takes its number, too. The work cut short leaves a counter below the number of records, and so the
// next opening does it again from the start.
#include <chrono>
#include <thread>

#include "core/texto.h"
#include "data/clavado.h"
#include "data/tablas.h"
#include "data/tablas_insistir.h"
#include "data/utilidades.h"

namespace tarvoline::data {

namespace {

using platform::TipoBloqueo;
namespace estado = motor::estado;

// Others let go of the file as soon as they see that they must wait.
constexpr int intentosDeCrear = 250;
constexpr std::chrono::milliseconds pausaDeCrear{4};
// The first character that an invalid name is told by.
constexpr unsigned char codigoSospechoso = 93;

bool tieneSospechosos(std::string_view comando) {
    return std::any_of(comando.begin(), comando.end(),
                       [](char c) { return static_cast<unsigned char>(c) >= codigoSospechoso; });
}

}  // namespace

// With `aunqueSirvan` also a key file that looks sound is made anew.
bool Tablas::rehacerClaves(int tabla, bool aunqueSirvan) {
    gMotor_->soltar(static_cast<unsigned>(tabla));
    std::optional<motor::CerrojoInsercion> cerrojo;
    tomarInsercion(abiertaOError(tabla), TipoBloqueo::exclusivo, cerrojo);
    for (int intento = 1;; ++intento) {
        const std::int16_t abierto = ordenAbrir(tabla);
        const bool hecho =
            abierto == estado::bien && !aunqueSirvan && clavesSirven(tabla, lugares(ranura(tabla)));
        if (hecho) return true;
        if (ordenCrear(tabla) == estado::bien) break;
        if (gEstado != estado::malo || intento == intentosDeCrear) {
            mostrarFalloDeCrear(tabla);
            return false;
        }
        std::this_thread::sleep_for(pausaDeCrear);
    }
    insertarTodas(tabla);
    return true;
}

std::int16_t Tablas::ordenCrear(int tabla) {
    std::int16_t longitud = 101;
    std::string claves;
    ClavesTabla(tabla, longitud, claves);
    return orden("/C/" + ranura(tabla).rutaClaves + "/ " + std::to_string(longitud) + "/ " + claves + "/A/ " +
                 std::to_string(tabla));
}

void Tablas::mostrarFalloDeCrear(int tabla) {
    if (gEstado == estado::ajeno) {
        caja(capa_.gErrores(180), core::Icono::parada);
    } else if (gEstado != estado::negado) {
        caja(capa_.gErrores(169) + " \r" + std::to_string(gEstado) + gComando + " " + capa_.gErrores(516),
             core::Icono::parada);
    } else if (tieneSospechosos(gComando)) {
        caja(capa_.gErrores(333) + " " + ranura(tabla).rutaClaves, core::Icono::parada);
        GrabarAjuste(capa_, "DATOS_DIR", "");
    } else {
        caja(capa_.gErrores(153), core::Icono::parada);
    }
}

void Tablas::insertarTodas(int tabla) {
    Ranura& ranura = ranuraDe(tabla);
    const auto leer = [&](std::uint64_t posicion, std::span<std::byte> destino) {
        std::size_t leidos = 0;
        insistir(*ranura.archivo, {posicion, destino.size()}, TipoBloqueo::compartido,
                 [&] { leidos = ranura.archivo->leer(posicion, destino); });
        return leidos;
    };
    clavarRegistros(definicion(tabla), lugares(ranura), leer, gMotor_->archivo(static_cast<unsigned>(tabla)));
}

}  // namespace tarvoline::data
