// MotorIndexados: order, search and record numbers of the tables, one key file (.QZC) a table, in a small
// text command language (orden.h). The invariants of the files stand in archivo_claves.h; here are those of
// tables:
//
//  6. An entry is the key text followed by the record number; texts compare byte by byte as if filled with
//     blanks to the file's longest key; equal texts are ordered by record number. A table's position is that
//     pair as a value, with its key: it survives any change by anybody, and N and P go to the nearest entry
//     behind or before it whether or not it still exists.
//  7. Record numbers are never given twice, and M does not lower the counter: another process may still be
//     blanking a removed record, or be about to write a new one. (CerrojoInsercion keeps M out while a record
//     is on its way.) More records in the data file than ultimoRegistro() says: the file is to be re-keyed.
//
// Statuses:
//    0  done
//    1  no command, unknown table or key, too many or too few keys, a key that is too long; open and
//       create: the file is damaged, or cannot be had now
//    2  open: no such file
//    9  no such entry: the end, the beginning, an empty key; D and R: (part of) what was to go was not there
//   12  S, G: no such key; on the greatest entry below
//   13  S, G: no such key; below the first, on that
//   15  S, G: no such key; above the last, on that
//   23  create: the system refuses (no folder, no right)
//   26  open and create: a file of another format, left alone
//   29  I: damaged, full, or not writable any more
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "motor/arbol.h"
#include "motor/orden.h"
#include "platform/archivos.h"

namespace tarvoline::motor {

namespace estado {
inline constexpr std::int16_t bien = 0;
inline constexpr std::int16_t malo = 1;
inline constexpr std::int16_t noExiste = 2;
inline constexpr std::int16_t noHay = 9;
inline constexpr std::int16_t entre = 12;
inline constexpr std::int16_t antes = 13;
inline constexpr std::int16_t despues = 15;
inline constexpr std::int16_t negado = 23;
inline constexpr std::int16_t ajeno = 26;
inline constexpr std::int16_t lleno = 29;
}  // namespace estado

// One thread at a time. Several of them, in one process or many, may use the same files at once, and one of
// them may have a file under several numbers.
class MotorIndexados {
  public:
    // `archivos` is borrowed and must outlive this object. `sincronizarAlCerrar`: K returns when the key
    // files have reached the disk (the data files are their owner's affair, and should get there first).
    explicit MotorIndexados(platform::SistemaArchivos& archivos, bool sincronizarAlCerrar = false);
    ~MotorIndexados();
    MotorIndexados(const MotorIndexados&) = delete;
    MotorIndexados& operator=(const MotorIndexados&) = delete;

    // Carries out `comando`, which stays as it is. `registro` is set by every positioning and by I; with
    // status 9 it is 0, with others it keeps its value. Throws ErrorMotor when the component itself fails
    // (damage met by anything but I and open, an error of the device); the position is then where it was.
    void Ejecutar(std::string& comando, std::int32_t& registro, std::int16_t& estadoComando);

    // What one N after the other would give, as one command: the record numbers of the entries behind the
    // table's position, as many as `registros` has room for. The table then stands on the last of them. 0 at
    // the end, and without a current entry. Throws ErrorMotor.
    std::size_t siguientes(unsigned tabla, std::span<std::int32_t> registros);
    // The highest record number that the table's counter has given. REQUIRES: abierta(tabla).
    std::uint32_t ultimoRegistro(unsigned tabla);
    // Closes one table's file, as K does with all; nothing when it has none.
    void soltar(unsigned tabla);
    bool abierta(unsigned tabla) const { return tabla < maxTablas && mesas_[tabla].archivo != nullptr; }
    // The file behind an open table, for tools that look inside. REQUIRES: abierta(tabla).
    ArchivoClaves& archivo(unsigned tabla) { return *mesas_[tabla].archivo; }

  private:
    struct Mesa {
        std::shared_ptr<ArchivoClaves> archivo;
        unsigned clave = 0;    // 0: no current key yet
        bool situada = false;  // false: before everything
        // Where it stands, and where the command under way would have it stand.
        std::array<Sitio, 2> sitios;
        unsigned cual = 0;
        // Leaves the table closed.
        std::shared_ptr<ArchivoClaves> levantar() {
            clave = 0;
            situada = false;
            return std::move(archivo);
        }
        Sitio& sitio() { return sitios[cual]; }
        Sitio& siguiente() { return sitios[1 - cual]; }
    };

    std::int16_t cumplir(std::int32_t& registro);
    std::int16_t abrir();
    std::int16_t crear();
    void acoger(Mesa& mesa, std::unique_ptr<ArchivoClaves> archivo);
    void cerrar();
    std::int16_t situar(std::int32_t& registro);
    // These fill mesa.siguiente() and answer the status.
    std::int16_t responder(Mesa& mesa);
    std::int16_t buscar(Arbol& arbol, Mesa& mesa) const;
    std::int16_t vecina(Arbol& arbol, Mesa& mesa) const;
    std::int16_t mover(Arbol& arbol, Mesa& mesa) const;
    void adelantarClaves(ArchivoClaves& archivo);
    std::int16_t insertar(std::int32_t& registro);
    std::int16_t borrar();
    std::int16_t cambiar();
    std::int16_t vaciar();
    ArchivoClaves& archivoDeOrden() { return *mesas_[orden_.tabla].archivo; }

    platform::SistemaArchivos& archivos_;
    bool sincronizarAlCerrar_;
    std::array<Mesa, maxTablas> mesas_;
    Orden orden_;  // the command under way
};

}  // namespace tarvoline::motor
