// The record layer: sixteen slots, each with one table of fixed-length records (.QZD), its keys (.QZC) and
// the text of one record (`gCampos`). A caller loads a record, reads and sets texts, writes it back; order,
// search and new record numbers come from the index engine, by commands.
//
// Slots run from 0 to 15, fields, records and key texts count from 1. Texts of fields are Windows-1252 bytes:
// a text field keeps exactly its width (set it with ponerCampo), a number is its text with a point, a date
// its six characters. What a caller leaves in gCampos stays there between records.
//
// With CapaDatos::gMultiusuario other processes may be at the same tables. Nothing is locked to read; a read
// or write that fails, because another handle holds a lock on its range or otherwise, is tried 500 times
// (each time it waits up to 10 ms for a held range), then once more after each box "Archivo en uso por otro
// proceso" that a person has seen. Where nobody can see a box the operation throws its
// platform::ErrorArchivo, permisoDenegado for a held range. A table that is not open gives ErrorArchivo
// noExiste, a record number below 1 std::out_of_range, unless it is said otherwise; an order that the engine
// itself fails at throws motor::ErrorMotor.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/capa_datos.h"
#include "data/codec.h"
#include "data/definicion_tabla.h"
#include "motor/cerrojos.h"
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

// The tables of a company, by number. The name is that of the definition; with the company's number behind
// it, in capitals, that of the files.
struct TablaEmpresa {
    int tabla;
    std::string_view nombre;
};
inline constexpr std::array<TablaEmpresa, 9> tablasDeEmpresa{{{tabla::planc, "PLANC"},
                                                              {tabla::extra, "EXTRA"},
                                                              {tabla::datos, "DATOS"},
                                                              {tabla::iva01, "IVA01"},
                                                              {tabla::efect, "EFECT"},
                                                              {tabla::presu, "Presu"},
                                                              {tabla::costo, "Costo"},
                                                              {tabla::planA, "PlanA"},
                                                              {tabla::anali, "Anali"}}};

inline constexpr int numeroRanuras = 16;

struct Ranura {
    std::shared_ptr<const DefinicionTabla> definicion;  // stays when the table is closed
    std::vector<std::string> gCampos;                   // [0] is not used
    std::string gNombreTabla;                           // first five characters of the table's name
    std::string rutaDatos;                              // data file, as opened last
    std::string rutaClaves;
    std::unique_ptr<platform::Archivo> archivo;  // null: closed
    bool conClaves = false;

    // How it was opened last, to be opened so again.
    std::string nombre, directorio, sufijo;
    int modo = 0;
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
    // Sends gComando; the engine sets gRegistro and gEstado. Shows nothing.
    void LlamarIndexados();
    // The same with a command; returns gEstado.
    std::int16_t orden(std::string comando);
    // MotorIndexados::siguientes: many N at the price of one; gRegistro and gEstado stay.
    std::size_t siguientes(int tabla, std::span<std::int32_t> registros);

    // --- Tables -----------------------------------------------------------------------------------------
    // Opens the table `nombre` (definition `nombre`.QZA in the program directory) of the company `sufijo` in
    // `directorio`; a data file that does not exist comes into being empty. `modo` 1: with its keys, which
    // are created, and made anew from the records, when the file is missing, damaged, of other keys than the
    // definition's, or knows fewer records than the data file has. What goes wrong is shown, and nothing is
    // thrown; returns whether the table is open.
    bool AbrirTabla(int tabla, std::string_view nombre, int modo, std::string_view directorio,
                    std::string_view sufijo);
    // The nine tables of a company with their keys, then the currency table of the company in force
    // (cargarMonedas). Empty arguments: the company in force; without one nothing is opened.
    bool AbrirTablasEmpresa(std::string_view directorio = {}, std::string_view sufijo = {});
    // Closes every data file and sends "K". The definitions and gCampos stay. With the setting
    // "SincronizarAlCerrar" 1 both have reached the disk when it returns, the records before the keys.
    void CerrarTodo();
    // Closes one slot: its data file, and its key file under this number.
    void cerrarRanura(int tabla);
    bool abierta(int tabla) const { return ranura(tabla).archivo != nullptr; }

    const Ranura& ranura(int tabla) const { return ranuras_.at(static_cast<std::size_t>(tabla)); }
    // Throws std::out_of_range when the slot has never been opened.
    const DefinicionTabla& definicion(int tabla) const;
    // Field number of a position; throws std::out_of_range when the table's definition has none.
    int gCampoDePosicion(int tabla, int posicion) const;
    // The title of the table's definition in proper case ("Libro Mayor").
    std::string TituloTabla(int tabla) const;
    // Whole records in the data file, removed ones among them.
    std::int64_t cuantosRegistros(int tabla);

    // --- Field texts ------------------------------------------------------------------------------------
    std::string& gCampos(int tabla, int campo);
    const std::string& gCampos(int tabla, int campo) const;
    // A text or date left-justified in the length that the field has: cut, or filled with blanks. A number as
    // it stands. `bytes` are Windows-1252.
    void ponerCampo(int tabla, int campo, std::string_view bytes);
    void blanquear(int tabla);  // every field blank
    // The same in UTF-8 by position, without trailing blanks and cut at a zero byte.
    std::string texto(int tabla, int posicion) const;
    void ponerTexto(int tabla, int posicion, std::string_view utf8);

    // --- Records ----------------------------------------------------------------------------------------
    // All fields into gCampos; what lies behind the end of the file reads as zero bytes. A record below 1
    // does nothing (and is `sinEscribir`). Walks and scans pass over records that are not `vivo`.
    EstadoRegistro LeerRegistro(int tabla, std::int32_t registro);
    // Whole records from `desde` on as they are on disk, for scans: as many as `bytes` has room for. `bytes`
    // is cut to those that the file has; gCampos stays.
    void leerRegistros(int tabla, std::int32_t desde, std::string& bytes);
    // Fields 1 to 3 alone, as raw text: the cheap look before a reject; valid only where these are texts or
    // dates. The tries used up: gives up after one box, the fields stay, and the answer is `sinEscribir`.
    EstadoRegistro LeerCabeceraRegistro(int tabla, std::int32_t registro);
    // Throws ErrorCampo when a number does not fit its field; nothing has been written then.
    void EscribirRegistro(int tabla, std::int32_t registro);
    // Inserts the keys of gCampos, then writes the record at gRegistro. gEstado is not 0 when nothing was
    // stored, which has been shown. A record that cannot be written takes its keys back before it throws.
    void AnadirRegistro(int tabla);
    // Takes the record out of all keys and leaves it blank with "ANULADO" at its head. gEstado is that of the
    // keys; a failure of theirs is shown and the record goes all the same. A record below 1 does nothing; of
    // one that does not exist yet only the keys go.
    void BorrarRegistro(int tabla, std::int32_t registro);
    // One field from the disk in its text form, a text with the field's length; gCampos stays.
    std::string LeerCampo(int tabla, std::int32_t registro, int campo);
    // A field of 8 bytes; gCampos stays.
    double LeerCampoDoble(int tabla, std::int32_t registro, int campo);
    void escribirCampoDoble(int tabla, std::int32_t registro, int campo, double valor);
    // Sets gCampos and writes that field alone.
    void GrabarCampo(int tabla, std::int32_t registro, int campo, std::string_view bytes);
    // The same, the keys that the field takes part in first (code 300 + `campo` of ClavesTabla, which loads
    // the record into gCampos).
    void GrabarCampoClave(int tabla, std::int32_t registro, int campo, std::string_view bytes);

    // Locks the fields `desde` to `hasta` (0: the whole record; `hasta` 0: `desde` alone) against other
    // handles. A range that ends with the last field reaches one byte into the next record, for both members.
    void BloquearRegistro(int tabla, std::int32_t registro, int desde = 0, int hasta = 0);
    void DesbloquearRegistro(int tabla, std::int32_t registro, int desde = 0, int hasta = 0);

    // The raw scan: the next record that holds `texto` in that field, found in blocks of whole records
    // without a look at the keys; removed records that still hold it count. `continuar` 0 starts at the
    // beginning; it is 0 again, and the answer too, when there are no more. `texto` is Windows-1252. With
    // `dosTextos` its halves are two targets of equal length (an odd character in the middle is dropped) and
    // whichever comes first counts; the second one always distinguishes case. A target that begins within the
    // last two bytes of a record is not found there. 0 without a company.
    struct Busqueda {
        int continuar = 0;
        std::uint64_t posicion = 1;  // file position of the next block, from 1
        std::string bloque;
    };
    std::int32_t BuscarEnTabla(Busqueda& busqueda, int tabla, int campo, std::string_view texto,
                               bool ignorarMayusculas = false, bool dosTextos = false);

    // --- Keys (claves_tabla.cpp) ------------------------------------------------------------------------
    // One entry for all that is asked of a table's keys; `codigo` says what, and both arguments may be
    // changed.
    //   0        key texts of all keys from gCampos: "\k1\k2...\kn"
    //   1-10     the text of that key: "\k"
    //   100      texto = name: takes the keys from the definition file, the fields stay; texto := "Apertura"
    //            and the number
    //   101      codigo := characters of the longest key, texto := number of keys
    //   102      texto = record: moves its keys to what the form `Text1` shows
    //   201-299  which key begins with field codigo - 200: texto := the highest, codigo := 1; else 0, 0
    //   301-399  texto = blank, record, "\", value: moves the keys of that record to the new value of
    //            field codigo - 300; gCampos is then the record as it was
    //   401-499  texto := whether field codigo - 400 is part of a key, "True" or "False"
    //   501-599  texto := fields of key codigo - 500, joined with commas
    // Any other gives an empty text, and so does what fails, which is shown. A key that cannot be moved is
    // shown, and the next one is taken; a record that cannot be read for it is thrown, so that nobody writes
    // a value over keys that stayed.
    void ClavesTabla(int tabla, std::int16_t& codigo, std::string& texto);
    // The answer of code 0, and of codes 1 to 10.
    std::string textosClave(int tabla) const;
    std::string textoClave(int tabla, int clave) const;
    // Moves the keys of a record from gCampos to `nuevos` (by field number), all in one command: all of them
    // move or none. Shows nothing; gives gEstado.
    std::int16_t cambiarClaves(int tabla, std::int32_t registro, const std::vector<std::string>& nuevos);
    // The boxes of the edit form of code 102, by field number less 1, in UTF-8; "" for one that is not there.
    // Not set: the code does nothing.
    std::function<std::string(int indice)> Text1;

  private:
    enum class Insercion { hecha, rehusada, ocupada };

    Ranura& abiertaOError(int tabla);
    const CampoTabla& campoDe(int tabla, int campo) const { return definicion(tabla).campo(campo); }
    // tablas_apertura.cpp
    bool abrirRanura(int tabla);
    bool cargarDefinicion(int tabla, std::string_view nombre);
    bool tomarClaves(int tabla, std::string_view nombre);
    bool mostrandoFallos(std::string_view nombre, const std::function<void(const std::string&)>& leer);
    void abrirDatos(Ranura& ranura);
    bool abrirClaves(int tabla);
    bool vaciarClaves(int tabla);
    void mostrarFalloDeCrear(int tabla);
    std::int64_t lugares(const Ranura& ranura) const;
    bool clavesSirven(int tabla, std::int64_t registros);
    std::int16_t ordenAbrir(int tabla);
    std::int16_t ordenCrear(int tabla);
    // tablas_reclavado.cpp
    bool rehacerClaves(int tabla, bool aunqueSirvan);
    void insertarTodas(int tabla);
    // tablas_registros.cpp
    platform::Rango rangoDe(int tabla, std::int32_t registro, int campo = 0) const;
    platform::Rango rangoBloqueo(int tabla, std::int32_t registro, int desde, int hasta) const;
    EstadoRegistro leerBytes(Ranura& ranura, platform::Rango rango);
    void escribirBytes(Ranura& ranura, std::uint64_t posicion, std::string_view bytes);
    template <typename Paso>
    void insistir(platform::Archivo& archivo, platform::Rango rango, platform::TipoBloqueo tipo, Paso&& paso);
    void trasFallo(int fallos, platform::Archivo& archivo, platform::Rango rango, platform::TipoBloqueo tipo);
    // tablas_altas.cpp
    void tomarInsercion(Ranura& ranura, platform::TipoBloqueo tipo,
                        std::optional<motor::CerrojoInsercion>& cerrojo);
    Insercion intentarInsercion(int tabla);
    void ponerInsercion(int tabla);  // the command that inserts gCampos
    bool lugarLibre(Ranura& ranura, std::uint64_t posicion);
    void deshacerInsercion(int tabla, std::uint64_t posicion);
    void reabrirTodo(int tabla);
    void borrarSuyo(int tabla, std::int32_t registro);
    void quitarClaves(int tabla, std::int32_t registro);
    // claves_tabla.cpp
    void responderClaves(int tabla, std::int16_t& codigo, std::string& texto);
    void reclavar(int tabla, std::string_view registro, const std::vector<std::string>& nuevos, bool deForma);
    void reclavarDeForma(int tabla, std::string_view registro);
    void reclavarDeCampo(int tabla, int campo, std::string_view texto);

    void caja(std::string texto, core::Icono icono) const;
    Ranura& ranuraDe(int tabla) { return ranuras_.at(static_cast<std::size_t>(tabla)); }

    CapaDatos& capa_;
    const std::string gDirectorio_;
    const bool sincronizar_;
    CacheDefiniciones definiciones_;
    std::unique_ptr<motor::MotorIndexados> gMotor_;
    std::array<Ranura, numeroRanuras> ranuras_;
    std::string bytes_;  // of the record or field under way
};

}  // namespace tarvoline::data
