// The record layer: sixteen slots, each with one table of fixed-length records (.QZD), its keys (.QZC) and
// the text of one record (`gCampos`). A caller loads a record, reads and sets texts, writes it back; order,
// search and new record numbers come from the index engine, by commands.
//
// Slots run from 0 to 15, fields, records and key texts count from 1. Texts of fields are Windows-1252 bytes:
// a text field keeps exactly its width (set it with ponerCampo), a number is its text with a point, a date
// its six characters. What a caller leaves in gCampos stays there between records.
//
// With CapaDatos::gMultiusuario other processes may be at the same tables. Nothing is locked to read; a read
// or write that meets another handle's lock is tried 500 times (each try waits up to 10 ms for the range),
// then once more after each box "Archivo en uso por otro proceso" that a person has seen. Where nobody can
// see a box the operation throws platform::ErrorArchivo permisoDenegado.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/capa_datos.h"
#include "data/definicion_tabla.h"
#include "motor/motor_indexados.h"

namespace tarvoline::data {

// Table numbers of a company. 0, 7 and 11 to 15 are free for whoever opens a table for himself.
namespace tabla {
inline constexpr int planc = 1;
inline constexpr int extra = 2;
inline constexpr int datos = 3;
inline constexpr int iva01 = 4;
inline constexpr int efect = 5;
inline constexpr int presu = 6;
inline constexpr int costo = 8;
inline constexpr int planA = 9;
inline constexpr int anali = 10;
}  // namespace tabla

inline constexpr int numeroRanuras = 16;

struct Ranura {
    std::shared_ptr<const DefinicionTabla> definicion;  // stays when the table is closed
    std::vector<std::string> gCampos;                   // [0] is not used
    std::string gNombreTabla;                           // first five characters of the table's name
    std::string rutaDatos;                              // data file, as opened last
    std::unique_ptr<platform::Archivo> archivo;         // null: closed
    bool conClaves = false;
};

class Tablas {
  public:
    // `capa` is borrowed and must outlive this object.
    explicit Tablas(CapaDatos& capa);
    ~Tablas();
    Tablas(const Tablas&) = delete;
    Tablas& operator=(const Tablas&) = delete;

    // --- The engine -------------------------------------------------------------------------------------
    std::string gComando;
    std::int32_t gRegistro = 0;
    std::int16_t gEstado = 0;
    // Sends gComando; the engine sets gRegistro and gEstado. Shows nothing. Throws motor::ErrorMotor when the
    // component itself fails.
    void LlamarIndexados();
    // The same with a command; returns gEstado.
    std::int16_t orden(std::string comando);

    // --- Tables -----------------------------------------------------------------------------------------
    // Opens the table `nombre` (definition `nombre`.QZA in the program directory) of the company `sufijo` in
    // `directorio`; a data file that does not exist comes into being empty. `modo` 1: with its keys, which
    // are created, and made anew from the records, when the file is missing, damaged or knows fewer records
    // than the data file has. What goes wrong is shown; returns whether the table is open.
    bool AbrirTabla(int tabla, std::string_view nombre, int modo, std::string_view directorio,
                    std::string_view sufijo);
    // The nine tables of a company with their keys. Empty arguments: the company in force.
    bool AbrirTablasEmpresa(std::string_view directorio = {}, std::string_view sufijo = {});
    // Closes every data file and sends "K". The definitions and gCampos stay.
    void CerrarTodo();
    // Closes one slot's data file; its key file stays open until CerrarTodo.
    void cerrarRanura(int tabla);
    bool abierta(int tabla) const { return ranura(tabla).archivo != nullptr; }

    const Ranura& ranura(int tabla) const { return ranuras_.at(static_cast<std::size_t>(tabla)); }
    const DefinicionTabla& definicion(int tabla) const { return *ranura(tabla).definicion; }
    // Field number of a position; throws std::out_of_range when the table's definition has none.
    int gCampoDePosicion(int tabla, int posicion) const;
    // Whole records in the data file, removed ones among them.
    std::int64_t cuantosRegistros(int tabla);

    // --- Field texts ------------------------------------------------------------------------------------
    std::string& gCampos(int tabla, int campo);
    const std::string& gCampos(int tabla, int campo) const;
    // Left-justified in the length that the field has: cut, or filled with blanks. `bytes` are Windows-1252.
    void ponerCampo(int tabla, int campo, std::string_view bytes);
    void blanquear(int tabla);  // every field blank
    // The same in UTF-8 by position, without trailing blanks and cut at a zero byte.
    std::string texto(int tabla, int posicion) const;
    void ponerTexto(int tabla, int posicion, std::string_view utf8);

    // --- Records ----------------------------------------------------------------------------------------
    // All fields into gCampos. A record below 1 does nothing.
    void LeerRegistro(int tabla, std::int32_t registro);
    // Fields 1 to 3 alone, as raw text: the cheap look before a reject. The tries used up: gives up after one
    // box, and the fields stay.
    void LeerCabeceraRegistro(int tabla, std::int32_t registro);
    void EscribirRegistro(int tabla, std::int32_t registro);
    // Inserts the keys of gCampos, then writes the record at gRegistro. gEstado is not 0 when nothing was
    // stored, which has been shown.
    void AnadirRegistro(int tabla);
    // Takes the record out of all keys and leaves it blank with "ANULADO" at its head. gEstado is that of the
    // keys; a failure of theirs is shown and the record goes all the same.
    void BorrarRegistro(int tabla, std::int32_t registro);
    // One text field from the disk, with the field's length; gCampos stays.
    std::string LeerCampo(int tabla, std::int32_t registro, int campo);
    double LeerCampoDoble(int tabla, std::int32_t registro, int campo);
    void escribirCampoDoble(int tabla, std::int32_t registro, int campo, double valor);
    // Sets gCampos and writes that field alone.
    void GrabarCampo(int tabla, std::int32_t registro, int campo, std::string_view bytes);
    // The same, the keys that the field takes part in first.
    void GrabarCampoClave(int tabla, std::int32_t registro, int campo, std::string_view bytes);

    // Locks the fields `desde` to `hasta` (0: the whole record; `hasta` 0: `desde` alone) for other handles.
    void BloquearRegistro(int tabla, std::int32_t registro, int desde = 0, int hasta = 0);
    void DesbloquearRegistro(int tabla, std::int32_t registro, int desde = 0, int hasta = 0);

    // The raw scan: where the next record is that holds `texto` in that field. `continuar` 0 starts at the
    // beginning; it is 0 again, and the answer too, when there are no more.
    struct Busqueda {
        int continuar = 0;
        std::uint64_t posicion = 0;
        std::size_t cursor = 0;
        std::string bloque;
    };
    std::int32_t BuscarEnTabla(Busqueda& busqueda, int tabla, int campo, std::string_view texto,
                               bool ignorarMayusculas = false, bool dosTextos = false);

    // --- Keys (claves_tabla.cpp) ------------------------------------------------------------------------
    // The request codes: 0 key texts of all keys, 1-10 of one, 100 definitions, 101 longest key and count,
    // 102 re-key from a form, 201-299 key that begins with a field, 301-399 re-key a record for a new value,
    // 401-499 is the field in a key, 501-599 fields of a key. Any other: empty text.
    void ClavesTabla(int tabla, std::int16_t& codigo, std::string& texto);
    // The answer of code 0, "\k1\k2...\kn", for any texts.
    std::string textosClave(int tabla) const;
    std::string textoClave(int tabla, int clave) const;
    // The boxes of the edit form of code 102, by field number less 1; "" for one that is not there. Not set:
    // the code does nothing.
    std::function<std::string(int indice)> Text1;

  private:
    CapaDatos& capa_;
    CacheDefiniciones definiciones_;
    std::unique_ptr<motor::MotorIndexados> gMotor_;
    std::array<Ranura, numeroRanuras> ranuras_;
};

}  // namespace tarvoline::data
