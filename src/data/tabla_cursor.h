// A row at a time of one table (.QZD), with a filter over its columns.
//
//     TablaCursor lineas(capa, tablas);
//     lineas.Abrir(ruta);
//     lineas.Filtrar("FECHA = 31/12/25 AND ASIENTO = 000012");
//     for (lineas.Primero(); !lineas.FinDeTabla(); lineas.Siguiente()) importe += lineas.LeerNumero(6);
//
// The set is a list of record numbers, taken once: what others add later is not in it, and what they remove
// is passed over. It comes in the order of entry; that of the account tables (PLANC, COSTO, PLANA) by
// account. A cursor takes a slot of Tablas that is free, 11 to 15, 0 and 7, and reads and writes a row in a
// buffer of its own. When the slot is closed under it (Tablas::CerrarTodo) it opens its table again at its
// next call, with its set and its row.
//
// Fields are named by position plus a column index, which is added to the field number of the position (0
// but for runs of like columns), or by title. Texts are UTF-8. An unknown position throws
// std::out_of_range, an unknown title or a text that is no filter ErrorFiltro, a call out of order
// ErrorCursor; files, locks and keys fail as they do in Tablas.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "data/filtro.h"
#include "data/tablas.h"

namespace tarvoline::data {

// No slot is left, the table is not open, or there is no row or no change that the call could be about.
class ErrorCursor : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class TablaCursor {
  public:
    // Both are borrowed and must outlive this object.
    TablaCursor(CapaDatos& capa, Tablas& tablas) : capa_(capa), tablas_(tablas) {}
    ~TablaCursor() { Cerrar(); }
    TablaCursor(const TablaCursor&) = delete;
    TablaCursor& operator=(const TablaCursor&) = delete;

    // `ruta`: the data file; the first five characters of its name are the table's, the next two the
    // company's number. Returns whether it is open; why not has been shown. Throws ErrorCursor when no slot
    // is left.
    bool Abrir(std::string_view ruta);
    // Also what a destructor does: nothing when it is closed already.
    void Cerrar();

    // --- The set ----------------------------------------------------------------------------------------
    // Restricts the set (filtro.h); an empty text: all rows. There is no current row then.
    void Filtrar(std::string_view texto);
    void Filtrar(const std::vector<Condicion>& condiciones);
    // Both take the set, unless it has just been counted.
    void Primero();
    void Ultimo();
    // The row behind the current one, or behind the one just removed.
    void Siguiente();
    // True when there is no current row.
    bool FinDeTabla() const { return registro_ == 0; }
    // The row with this record number, in the set or not; none when it does not exist. Without a set or a
    // filter so far the row is the set. Siguiente goes on behind it if it is in the set, else from where the
    // walk stood.
    void IrARegistro(std::int32_t registro);
    // Rows of the set; 0 when the row of the last IrARegistro does not exist.
    std::int32_t ContarRegistros();
    // Record number of the current row; 0: none.
    std::int32_t registro() const { return registro_; }

    // --- The row ----------------------------------------------------------------------------------------
    // A text without trailing blanks and cut at a zero byte, a number as its text, a date in its stored six
    // characters. "" and 0 when there is no current row.
    std::string LeerCampo(int posicion, int indice = 0);
    double LeerNumero(int posicion, int indice = 0);
    std::string LeerCampoPorNombre(std::string_view columna);
    // Of the table, good until the cursor is closed.
    const DefinicionTabla& definicion();

    // A change begins with Nuevo (all fields blank) or Editar (the current row as it is now), goes on in the
    // buffer with EscribirCampo, and is stored by Actualizar; any move gives it up.
    void Nuevo();
    void Editar();
    void EscribirCampo(int posicion, int indice, std::string_view valor);
    void EscribirCampo(int posicion, int indice, double valor);
    // A new row is inserted and becomes the current one. Of an existing one the fields that were written are
    // stored and nothing else, their keys first, all or none. Tablas::gEstado is 0, or that of the keys; then
    // nothing has been stored. Throws ErrorCampo for a number that does not fit, nothing being stored.
    void Actualizar();
    // Removes the current row; Tablas::gEstado is that of the keys.
    void Borrar();

  private:
    enum class Cambio { ninguno, edicion, alta };

    bool ocupar();
    bool esSuya() const;
    void asegurarAbierta();
    void tomarConjunto();
    void situarDesde();
    bool cargar(std::int32_t registro);
    void soltarFila();
    int campoDe(int posicion, int indice);
    std::string textoDe(int campo) const;
    void escribir(int campo, const std::string& bytes);
    void anadir();
    void cambiar();
    void grabarFila(const std::vector<std::string>& nuevos);

    CapaDatos& capa_;
    Tablas& tablas_;
    std::string ruta_, nombre_, directorio_, sufijo_;
    int ranura_ = -1;                             // -1: not open
    const platform::Archivo* archivo_ = nullptr;  // by which it knows its slot again; never used

    Filtro filtro_;
    std::vector<std::int32_t> conjunto_;
    std::size_t lugar_ = 0;     // of the walk in the set
    bool filtrada_ = false;     // Filtrar has been called since Abrir
    bool tomado_ = false;       // the set stands
    bool reciente_ = false;     // and nobody has walked it yet
    bool perdida_ = false;      // IrARegistro found no row
    bool yaSiguiente_ = false;  // `lugar_` is that of the row to come already

    std::int32_t registro_ = 0;
    std::vector<std::string> campos_;  // of the current row or the new one, as gCampos
    Cambio cambio_ = Cambio::ninguno;
    std::vector<int> escritos_;  // field numbers
};

}  // namespace tarvoline::data
