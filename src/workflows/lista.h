// The grid `fx1`: its layout, its filling, its sort order and the deletion of rows.
//
// Columns, from 0 (0, 1, 2, 6, 7 and 8 are never seen):
//
//   col  files                                     history
//   1    running number "001"                      -
//   2    full name as stored; sort key by name     -
//   3    description                               text of the entry
//   4    "dd/mm/yyyy hh:mm"                        the same
//   5    size with its unit                        further column of the entry
//   6    "yyyymmddhhmm", sort key by date          the same
//   7    size in bytes; sort key by size           as column 5
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

namespace columna_rejilla {
inline constexpr int numero = 1;
inline constexpr int nombre = 2;
inline constexpr int descripcion = 3;
inline constexpr int fecha = 4;
inline constexpr int tamano = 5;
inline constexpr int ordenFecha = 6;
inline constexpr int ordenTamano = 7;
}  // namespace columna_rejilla

// Number of the Delete key; every other key of the grid only leaves its history line.
inline constexpr int teclaSuprimir = 46;

// Name of an archive taken apart by position: description, date and time.
struct NombreArchivado {
    std::string descripcion;  // with the blank that stands before the stamp
    std::string fechaHora;    // "dd/mm/yyyy hh:mm"
    std::string orden;        // "yyyymmddhhmm"
};

class Lista : public Flujo {
  public:
    using Flujo::Flujo;

    // Empties the grid and lays it out: the heading row, and a row for each entry of List1 (the history gets
    // one empty row). Nothing is chosen afterwards.
    void PrepararGrid(bool historia = false);
    // File names of List1 into rows, with their sizes unless gInicio is up. Throws core::ErrorIndice for an
    // archive's name shorter than 21 characters.
    void LlenarGrid();

    // 0 name, 1 date, 2 size, or a saved order above 100 ("1", index, direction), which sorts as it says. The
    // direction changes with each use, whatever the column, and is saved.
    void Ordenar_Click(int indice);
    // The order of the last run, from the settings, or any saved one. One by size waits until the sizes are
    // there, or the person sorts otherwise.
    void aplicarOrdenGuardado();
    // The order that the next list of files takes as soon as it stands, one by size once the sizes are known;
    // 0 for none. Codes as in gOrdenGrid.
    void ordenarAlLlenar(int orden) { ordenPendiente_ = orden > 100 ? orden : 0; }
    int ordenGuardado() const;  // 0: none
    void aplicarOrden(int orden);
    void alConocerTamanos();

    // A key pressed on the grid. Delete deletes the selected files without a question; every key leaves a
    // history line.
    void fx1_KeyDown(int tecla);
    // The same after a question, and the list read again.
    void Eliminar_Click();
    // Lower and higher row of the selection.
    std::pair<int, int> seleccion() const;
    // Deletes the selected files on the service, by name, up to the first failure (which is shown and reloads
    // the list). Returns the names that are gone.
    std::vector<std::string> borrarSeleccion();

    static NombreArchivado separarNombre(std::string_view nombre);
    // Sort key of a date and time as shown: "yyyymmdd" and the time without ":". Dates as dd/mm/yyyy or
    // yyyy-mm-dd; any other text is its own key.
    static std::string claveFecha(std::string_view fechaHora);

  private:
    void teclaEnRejilla(int tecla);
    void quitarFilasBorradas(bool unaSolaFila);

    int ordenPendiente_ = 0;  // a saved order by size that waits for the sizes
};

}  // namespace tarvoline::workflows
