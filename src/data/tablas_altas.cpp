// Records that come and go: keys and data file together.
#include <algorithm>
#include <array>

#include "core/texto.h"
#include "data/claves_tabla.h"
#include "data/tablas.h"
#include "data/tablas_insistir.h"

namespace tarvoline::data {

namespace {

using platform::ErrorArchivo;
using platform::Rango;
using platform::TipoBloqueo;
namespace estado = motor::estado;

// Records stand where the counter says that none do, as when the keys are an older copy: keyed again, all of
// them count.
constexpr int vecesOcupado = 3;

}  // namespace

void Tablas::tomarInsercion(Ranura& ranura, TipoBloqueo tipo,
                            std::optional<motor::CerrojoInsercion>& cerrojo) {
    insistir(*ranura.archivo, {motor::byteInsertando, 1}, tipo, [&] {
        cerrojo.emplace(*ranura.archivo, tipo, std::chrono::milliseconds::zero());
        if (cerrojo->tomado()) return;
        cerrojo.reset();
        throw ErrorArchivo(platform::error_archivo::permisoDenegado, ranura.rutaDatos,
                           "otro programa inserta o rehace las claves");
    });
}

void Tablas::AnadirRegistro(int tabla) {
    Insercion como = intentarInsercion(tabla);
    if (como == Insercion::rehusada && gEstado == estado::lleno && capa_.gMultiusuario) {
        reabrirTodo(tabla);
        if (!abierta(tabla)) gEstado = estado::lleno;
        if (abierta(tabla)) como = intentarInsercion(tabla);
    }
    for (int i = 0; como == Insercion::ocupada && i < vecesOcupado; ++i) {
        if (!rehacerClaves(tabla, true)) {
            ordenAbrir(tabla);
            break;
        }
        como = intentarInsercion(tabla);
    }
    if (como == Insercion::ocupada) {
        gEstado = estado::lleno;
        ponerInsercion(tabla);
    }
    if (gEstado == estado::bien) return;
    caja(capa_.gErrores(169) + " " + std::to_string(gEstado) + " " + core::aUtf8(gComando),
         core::Icono::parada);
}

Tablas::Insercion Tablas::intentarInsercion(int tabla) {
    Ranura& ranura = abiertaOError(tabla);
    // First of all: what cannot be written must not leave a key.
    cifrarRegistro(*ranura.definicion, ranura.gCampos, bytes_);
    std::optional<motor::CerrojoInsercion> cerrojo;
    tomarInsercion(ranura, TipoBloqueo::compartido, cerrojo);
    ponerInsercion(tabla);
    LlamarIndexados();
    if (gEstado != estado::bien) return Insercion::rehusada;
    const std::uint64_t posicion = rangoDe(tabla, gRegistro).desde;
    try {
        if (lugarLibre(ranura, posicion)) {
            escribirBytes(ranura, posicion, bytes_);
            return Insercion::hecha;
        }
    } catch (...) {
        deshacerInsercion(tabla, posicion);
        throw;
    }
    quitarClaves(tabla, gRegistro);
    return Insercion::ocupada;
}

void Tablas::ponerInsercion(int tabla) {
    const Ranura& una = ranura(tabla);
    gComando.assign("I\\").append(std::to_string(tabla));
    anadirClaves(*una.definicion, una.gCampos, gComando);
}

bool Tablas::lugarLibre(Ranura& ranura, std::uint64_t posicion) {
    if (posicion >= ranura.archivo->longitud()) return true;
    std::string lugar(bytes_.size(), '\0');
    insistir(*ranura.archivo, {posicion, lugar.size()}, TipoBloqueo::compartido,
             [&] { ranura.archivo->leer(posicion, std::as_writable_bytes(std::span(lugar))); });
    return estaVacio(lugar);
}

// The record could not be written: neither its keys nor a part of it stay, as far as that can be had.
void Tablas::deshacerInsercion(int tabla, std::uint64_t posicion) {
    try {
        quitarClaves(tabla, gRegistro);
        platform::Archivo& archivo = *ranuraDe(tabla).archivo;
        const std::uint64_t longitud = archivo.longitud();
        if (longitud > posicion) {
            const std::string ceros(std::min<std::uint64_t>(bytes_.size(), longitud - posicion), '\0');
            archivo.escribir(posicion, platform::comoBytes(ceros));
        }
    } catch (const std::exception& error) {
        capa_.avisar(ranura(tabla).rutaDatos + ": " + error.what());
    }
    gEstado = estado::lleno;
}

// The key file is closed with all others, and made anew where it is damaged. The fields stay, also those of
// other tables: a line of the journal may wait in them while the account that it is on is made.
void Tablas::reabrirTodo(int tabla) {
    Ranura& ranura = ranuraDe(tabla);
    std::array<std::vector<std::string>, numeroRanuras> campos;
    for (std::size_t i = 0; i < campos.size(); ++i)
        campos[i] = ranuras_[i].gCampos;
    const auto [nombre, directorio, sufijo] = std::tuple(ranura.nombre, ranura.directorio, ranura.sufijo);
    const int modo = ranura.modo;
    const std::string ruta = ranura.rutaDatos;
    CerrarTodo();
    if (capa_.enVigor.abierta()) AbrirTablasEmpresa();
    const bool laMisma = ranura.archivo && ranura.rutaDatos == ruta;
    if (!laMisma) AbrirTabla(tabla, nombre, modo, directorio, sufijo);
    for (std::size_t i = 0; i < campos.size(); ++i) {
        if (ranuras_[i].gCampos.size() == campos[i].size()) ranuras_[i].gCampos = campos[i];
    }
}

void Tablas::quitarClaves(int tabla, std::int32_t registro) {
    const Ranura& una = ranura(tabla);
    gComando = "D\\" + std::to_string(registro) + "\\Y\\ " + std::to_string(tabla);
    anadirClaves(*una.definicion, una.gCampos, gComando);
    LlamarIndexados();
}

void Tablas::BorrarRegistro(int tabla, std::int32_t registro) {
    if (registro < 1) return;
    if (!capa_.gMultiusuario) {
        borrarSuyo(tabla, registro);
        return;
    }
    BloquearRegistro(tabla, registro);
    try {
        borrarSuyo(tabla, registro);
    } catch (...) {
        ranura(tabla).archivo->desbloquear(rangoBloqueo(tabla, registro, 0, 0));
        throw;
    }
    DesbloquearRegistro(tabla, registro);
}

void Tablas::borrarSuyo(int tabla, std::int32_t registro) {
    Ranura& ranura = abiertaOError(tabla);
    LeerRegistro(tabla, registro);
    quitarClaves(tabla, registro);
    if (gEstado != estado::bien) {
        caja(capa_.gErrores(170) + " " + TituloTabla(tabla), core::Icono::parada);
    }
    blanquear(tabla);
    const Rango rango = rangoDe(tabla, registro);
    if (rango.desde >= ranura.archivo->longitud()) return;
    // Blank and marked in one write, so that no moment shows it blank and unmarked.
    cifrarRegistro(*ranura.definicion, ranura.gCampos, bytes_);
    bytes_.replace(0, std::min(bytes_.size(), marcaAnulado.size()), marcaAnulado.substr(0, bytes_.size()));
    escribirBytes(ranura, rango.desde, bytes_);
}

}  // namespace tarvoline::data
