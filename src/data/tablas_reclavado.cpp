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
#include "data/claves_tabla.h"
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
constexpr std::uint64_t bytesBloque = 1U << 20U;
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
    const std::int64_t ultimo = lugares(ranura);
    const auto longitud = static_cast<std::uint64_t>(definicion(tabla).gLongitudRegistro);
    const std::uint64_t porBloque = std::max<std::uint64_t>(1, bytesBloque / longitud);
    std::string bloque(porBloque * longitud, '\0');
    std::vector<std::string> campos = ranura.gCampos;
    std::int64_t numero = 1;
    while (numero <= ultimo) {
        const platform::Rango rango{static_cast<std::uint64_t>(numero - 1) * longitud, bloque.size()};
        std::uint64_t leidos = 0;
        insistir(*ranura.archivo, rango, TipoBloqueo::compartido, [&] {
            leidos = ranura.archivo->leer(rango.desde, std::as_writable_bytes(std::span(bloque)));
        });
        for (std::uint64_t i = 0; i < porBloque && numero <= ultimo; ++i, ++numero) {
            const bool entero = (i + 1) * longitud <= leidos;
            const std::string_view registro = std::string_view(bloque).substr(i * longitud, longitud);
            insertarLeido(tabla, entero ? registro : std::string_view(), numero, campos);
        }
    }
}

// An empty `registro` stands for one that is not whole.
void Tablas::insertarLeido(int tabla, std::string_view registro, std::int64_t numero,
                           std::vector<std::string>& campos) {
    const DefinicionTabla& def = definicion(tabla);
    const bool vivo = estadoDeRegistro(registro) == EstadoRegistro::vivo;
    if (vivo) {
        descifrarRegistro(def, registro, campos);
    } else {
        blanquearCampos(def, campos);
    }
    gComando.assign("I\\").append(std::to_string(tabla));
    anadirClaves(def, campos, gComando);
    LlamarIndexados();
    if (gEstado != estado::bien || gRegistro != numero) {
        throw motor::ErrorMotor(ranura(tabla).rutaClaves + ": record " + std::to_string(numero) +
                                " could not be keyed again, status " + std::to_string(gEstado));
    }
    if (vivo) return;
    gComando = "D\\" + std::to_string(numero) + "\\Y\\" + std::to_string(tabla);
    anadirClaves(def, campos, gComando);
    LlamarIndexados();
}

}  // namespace tarvoline::data
