// The answer to a search: lines by line feeds, cells by tabs, the names of the columns in the first line.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::link::remoto {

class TablaRespuesta {
  public:
    // Empty lines are passed over; cells that a line does not have are empty.
    explicit TablaRespuesta(std::string_view respuesta);

    std::size_t filas() const { return filas_.size(); }
    // By the name of the column, its case ignored; "" when there is none.
    const std::string& texto(std::size_t fila, std::string_view columna) const;
    double numero(std::size_t fila, std::string_view columna) const;

  private:
    std::map<std::string, std::size_t, std::less<>> columnas_;  // upper case
    std::vector<std::vector<std::string>> filas_;
};

}  // namespace tarvoline::link::remoto
