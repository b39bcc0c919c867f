// One key file (.QZC) in use: its head, the copies of its pages, its locks. Trees read through leer(), an
// Escritura changes it. What holds whatever happens:
//
//  1. A command is atomic over all keys of its table. New pages are written beside the old ones; one head
//     holds every root, entry count, the record counter, the free pages and the high-water mark; one
//     command is one head write, over that of the two heads which is not the newest sound one (seal, check
//     sum). Nothing is derived from the file's length.
//  2. Commit n+1 takes only pages that head n lists as free or that lie behind its high-water mark, never
//     pages it frees itself. So all that head n reaches stands until head n+1 does; the older head rescues a
//     torn head write, nothing else.
//  3. A child pointer is (page, seal of the commit that wrote it); the page repeats the seal and has a check
//     sum that depends on its place and file. A page read or cached counts only if both agree. Seals bear
//     random bits: a page of a commit that died before its head is no page of the commit that took its
//     number. Caches are private copies, never a mapping.
//  4. Who knows one head at commit n need read only the other's seal: not above n means that nothing changed,
//     since commit n+1 ends by writing just that head.
//  5. Readers hold the turn shared, writers exclusively, for one command. Where the file lies on a disk of
//     this machine a reading command goes without: by 1 and 2 a commit under way disturbs nothing that head n
//     reaches, a page that a later one has taken no longer bears the seal sought (3), and the other head's
//     seal, read after the answer, tells whether head n still stood then (4). If not, or if anything read did
//     not fit, the command runs again, after a few tries under the turn. On network shares, where a client
//     may hold writes back until it gives a lock away, a reader always takes the turn, through the gate.
//  8. A process that dies leaves at most pages that no head reaches, or a torn head that 1 passes over: every
//     answered command stands, the unanswered one happened whole or not at all. A power failure may keep any
//     part of what was written since the last synchronisation: a head whose pages did not arrive is found out
//     by 3, the command fails, and a mark makes every later opening answer "damaged".
//  9. Damage is never a positioning status. After a failed head write nobody can say which head will be
//     found, so the object refuses to write from then on.
//
// (6, order and positions, and 7, record numbers, stand in motor_indexados.h; 10, swapping files, in
// reconstruccion.h.)
//
// One thread at a time, as with the file below it.
#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "motor/cabecera.h"
#include "motor/cache_paginas.h"
#include "motor/cerrojos.h"
#include "motor/errores.h"
#include "motor/libres.h"
#include "platform/archivos.h"

namespace tarvoline::motor {

// What opening and creating answer.
namespace estado_archivo {
inline constexpr int bien = 0;
inline constexpr int dannado = 1;
inline constexpr int noExiste = 2;
inline constexpr int negado = 23;  // the system refuses to create it
inline constexpr int ajeno = 26;   // a file of another format, left as it is
}  // namespace estado_archivo

class ArchivoClaves {
  public:
    struct Apertura;
    // Never throws ErrorArchivo: it becomes one of the states above. With `lectura` the file is never
    // changed, not even by the mark of damage.
    static Apertura abrir(platform::SistemaArchivos& archivos, std::string_view ruta,
                          platform::Apertura apertura = platform::Apertura::escritura);
    // Makes the file, or makes it anew while nobody else has it open. A file of these measures that others
    // have open and nobody has used yet is taken as it is: both wanted the same. `contador`: record numbers
    // up to it count as given.
    static Apertura crear(platform::SistemaArchivos& archivos, std::string_view ruta, unsigned longitud,
                          unsigned claves, std::uint32_t contador = 0);

    // The record counter of an open file, whoever opened it; nothing when no head is sound.
    static std::optional<std::uint32_t> contadorDe(platform::Archivo& archivo);

    // As known since the last command.
    const Cabecera& cabecera() const { return cabecera_; }
    unsigned ancho() const { return cabecera_.longitud; }
    platform::Archivo& archivo() { return *archivo_; }

    // Runs `orden`, which reads through cabecera() and pagina() and may be run more than once: what it
    // leaves behind counts only when this returns. Throws ErrorMotor.
    template <typename Orden>
    void leer(Orden&& orden);

    // The same, holding the turn from the start: once, and nothing changes meanwhile.
    template <typename Orden>
    void leerConTurno(Orden&& orden);
    // Runs `orden`, which reads, for the pages that it brings into memory alone: what it finds counts for
    // nothing. Does nothing where reading needs the turn.
    template <typename Orden>
    void adelantar(Orden&& orden);
    // The free pages that the head lists. Within leerConTurno().
    std::vector<Tramo> libres() {
        cargarLibres();
        return libres_.tramos();
    }
    // Leaves the mark that makes every later opening answer "damaged", and refuses writing from here on.
    void darPorDannado();

    // The page, checked; valid until the command ends. Throws Danno.
    const Pagina& pagina(const Hijo& hijo, unsigned clave, unsigned nivel);

  private:
    friend class Escritura;

    ArchivoClaves(std::unique_ptr<platform::Archivo> archivo, const Cabecera& cabecera);
    static Apertura desde(std::unique_ptr<platform::Archivo> archivo);
    static Apertura yaCreado(platform::SistemaArchivos& archivos, std::string_view ruta, unsigned longitud,
                             unsigned claves);

    // Runs `orden` without a lock; false when its answer cannot be trusted.
    template <typename Orden>
    bool leerSinTurno(Orden&& orden);
    bool sigueIgual();
    bool adoptarLaOtra();
    // Under the turn.
    void refrescar();
    void cargarLibres();
    bool paginaSana(const Octeto* datos, std::uint32_t numero) const;
    void cargarVecinas(const Hijo& hijo);
    const Pagina* enCache(const Hijo& hijo, unsigned clave, unsigned nivel);
    const Pagina& cargarPagina(const Hijo& hijo, unsigned clave, unsigned nivel);
    void leerExacto(std::uint64_t posicion, Octeto* destino, std::size_t bytes);

    std::unique_ptr<platform::Archivo> archivo_;
    Cabecera cabecera_;
    CachePaginas cache_;
    std::vector<Octeto> vecinas_;  // pages read together
    bool sinTurno_;
    // The other head's seal, known to belong to no sound head.
    Sello selloRoto_ = 0;
    // The free pages of the head with this seal; 0: not read.
    Libres libres_;
    Sello libresDe_ = 0;
    bool fallida_ = false;  // a head write failed
    // Buffers of the writing commands, kept for the next.
    struct Taller {
        std::array<std::vector<std::uint32_t>, 2> reservas;
        std::vector<std::uint32_t> sucias;
        std::vector<Tramo> liberadas;
        std::vector<Octeto> tanda;
    };
    Taller taller_;
    // The random bits of this handle's seals; drawn anew after a commit that failed.
    std::optional<std::uint64_t> azar_;
};

struct ArchivoClaves::Apertura {
    int estado = estado_archivo::bien;
    std::unique_ptr<ArchivoClaves> archivo;  // with `bien` only
};

template <typename Orden>
void ArchivoClaves::leer(Orden&& orden) {
    if (!sinTurno_ || !leerSinTurno(orden)) leerConTurno(orden);
}

template <typename Orden>
void ArchivoClaves::leerConTurno(Orden&& orden) {
    const Turno turno(*archivo_, platform::TipoBloqueo::compartido, !sinTurno_);
    try {
        refrescar();
        cache_.recortar();
        orden();
    } catch (const Danno&) {
        darPorDannado();
        throw;
    }
}

template <typename Orden>
void ArchivoClaves::adelantar(Orden&& orden) {
    if (!sinTurno_) return;
    try {
        if (sigueIgual() || adoptarLaOtra()) orden();
    } catch (const Danno&) {
        return;  // chance or damage: under the turn it will show
    }
}

template <typename Orden>
bool ArchivoClaves::leerSinTurno(Orden&& orden) {
    constexpr int intentos = 4;
    for (int i = 0; i < intentos; ++i) {
        try {
            cache_.recortar();
            orden();
            if (sigueIgual()) return true;
        } catch (const Danno&) {
            // Chance or damage: under the turn it will show.
            if (sigueIgual()) return false;
        }
        if (!adoptarLaOtra()) return false;
    }
    return false;
}

}  // namespace tarvoline::motor
