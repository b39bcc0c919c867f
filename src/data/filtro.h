// Filters over the columns of a table: conditions that a row must meet, all of them.
//
// As a text they are "<column> <operator> <value>" joined by " AND ", in any case; an empty text is no
// condition, every row meets it. The operators are =, >=, <=, >, <, LIKE, and => and =< for >= and <=; the
// first one in a part ends the column. The value stands as it is, without quotation, up to the next " AND "
// or the end. Blanks around all three are dropped. A value from elsewhere, which could hold such words, is
// given as a Condicion instead.
//
// Columns are the titles of the table's definition, in any case. What is compared depends on the column:
//   text    without trailing blanks and cut at a zero byte; = exactly, order by the bytes of Windows-1252
//   number  as a number; a value that is none counts as 0
//   date    in its stored form (fechas.h); the value may be dd/mm/yy, dd/mm/yyyy, yymmdd or stored, and an
//           empty one means no date; a limit that is none of these is no filter
// LIKE compares the whole text of any column, a number's too, without regard to case: "*" stands for any run
// of characters, "?" for one.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "data/capa_datos.h"
#include "data/definicion_tabla.h"

namespace tarvoline::data {

// A filter that cannot be understood: a part without an operator, or a column that the table does not have.
class ErrorFiltro : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

enum class Operador { igual, mayorIgual, menorIgual, mayor, menor, como };

struct Condicion {
    std::string columna;
    Operador operador = Operador::igual;
    std::string valor;  // UTF-8; trailing blanks do not count
    bool operator==(const Condicion&) const = default;
};

// The conditions of a text, not yet of any table. Throws ErrorFiltro.
std::vector<Condicion> interpretarFiltro(std::string_view utf8);

// The whole of `texto` against "*" and "?", without regard to case. Both are Windows-1252.
bool coincideComodines(std::string_view texto, std::string_view patron);

class Filtro {
  public:
    // Meets every row.
    Filtro() = default;
    // Throws ErrorFiltro for an unknown column. `definicion` is copied from, not kept.
    Filtro(const CapaDatos& capa, const DefinicionTabla& definicion,
           const std::vector<Condicion>& condiciones);

    // `registro`: the bytes of a whole record of that table.
    bool cumple(std::string_view registro) const;

    // A key whose segments are all given by equalities: every row that meets the filter has this very text in
    // it, unless a text of it goes on behind a zero byte. The rows found by it are still to be tested.
    struct Llave {
        int clave = 0;      // its number
        std::string texto;  // Windows-1252, as the index engine keeps it
    };
    // The key of the most segments; nothing when no key is covered. Numbers, and values that are empty or
    // longer than their field, cover none.
    const std::optional<Llave>& llave() const { return llave_; }

  private:
    struct Prueba {
        CampoTabla campo;
        Operador operador = Operador::igual;
        std::string valor;  // Windows-1252, as compared
        double numero = 0;
    };
    static bool supera(const Prueba& prueba, std::string_view bytes);
    void buscarLlave(const DefinicionTabla& definicion, const std::vector<int>& campos);

    std::vector<Prueba> pruebas_;
    std::optional<Llave> llave_;
};

}  // namespace tarvoline::data
