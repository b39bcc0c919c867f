// What the accounting service needs of a session beyond its members: rows of its tables by filters, and an
// entry to start from.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "data/tabla_cursor.h"
#include "tarvoline/enlace.h"

namespace tarvoline::link {

class Mostrador {
  public:
    // Borrowed; the company is open.
    explicit Mostrador(Enlace& enlace) : enlace_(enlace) {}

    // The entry that the next reading starts from; an empty part is none. Throws ErrorEnlace fechaNoValida.
    void situar(std::string_view fecha, std::string_view numero);
    // Throws ErrorEnlace fechaNoValida for a text that is no date; "" is none.
    void comprobarFecha(std::string_view texto) const;
    // The date of the session's entry, "dd/mm/yyyy"; "" when there is none.
    std::string fechaLarga() const;

    // Rows that meet the filter (data/filtro.h; "ABS(IMPORTE)= x" besides on the journal) as lines: the names
    // of the columns first, cells parted by tabs, dates "dd/mm/yy", a line feed behind each line; "" when
    // there is none. In the order of entry; accounts, and lines of the journal by account, in theirs.
    // `tabla`: its name. Throws data::ErrorFiltro.
    std::string buscar(std::string_view tabla, std::string_view filtro);
    // Sets a field of every such row, or removes them; how many. Throws ErrorEnlace errorIndexados.
    std::int32_t cambiar(std::string_view tabla, std::string_view filtro, int posicion,
                         std::string_view valor);
    std::int32_t borrar(std::string_view tabla, std::string_view filtro);

  private:
    void recorrer(std::string_view tabla, std::string_view filtro,
                  const std::function<void(data::TablaCursor&)>& alPasar);

    Enlace& enlace_;
};

}  // namespace tarvoline::link
