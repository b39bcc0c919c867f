// The grid `fx1`: its layout, its filling, its sort order and the deletion of rows.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

// Number of the Delete key; every other key of the grid only leaves its history line.
inline constexpr int teclaSuprimir = 46;

// Name of an archive taken apart by position: description, date and time.
struct NombreArchivado {
    std::string descripcion;
    std::string fechaHora;  // "dd/mm/yyyy hh:mm"
    std::string orden;      // "yyyymmddhhmm"
};

class Lista : public Flujo {
  public:
    using Flujo::Flujo;

    void PrepararGrid(bool historia = false);
    // File names of List1 into rows. Throws core::ErrorIndice for an archive's name shorter than 21
    // characters.
    void LlenarGrid();
    // 0 name, 1 date, 2 size, or a saved order above 100.
    void Ordenar_Click(int indice);
    void aplicarOrdenGuardado();
    void fx1_KeyDown(int tecla);
    void Eliminar_Click();
    // Lower and higher end of the selection.
    std::pair<int, int> seleccion() const;
    // Deletes the selected files; the names that are gone.
    std::vector<std::string> borrarSeleccion();

    static NombreArchivado separarNombre(std::string_view nombre);
};

}  // namespace tarvoline::workflows
