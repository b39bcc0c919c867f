// Entries whose lines do not add up to zero: some were posted so, others are what a program that ended in the
// middle of a posting has left.
//
// Memory grows with the entries that do not balance, and with those under way where the lines of several lie
// among each other.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "data/sumas_lineas.h"

namespace tarvoline::data {

struct AsientoDescuadrado {
    std::string fecha;                  // stored form
    std::string numero;                 // of the entry, without blanks at its end
    double exceso = 0;                  // debits less credits
    std::int64_t desde = 0, hasta = 0;  // the records between which its lines lie, or those of them that do
                                        // not balance
};
// In words, Spanish, UTF-8, one line.
std::string frase(const AsientoDescuadrado& asiento);

class CuadreAsientos {
  public:
    // A line of the journal; `importe` is negative in a credit.
    void anadir(std::int64_t registro, std::string_view fecha, std::string_view asiento, double importe);
    // By date and number.
    std::vector<AsientoDescuadrado> descuadrados() const;

  private:
    struct Resto {
        SumaExacta suma;
        std::int64_t desde = 0, hasta = 0;
    };
    std::map<std::string, Resto, std::less<>> abiertos_;  // by date (6 characters) and number
    std::string clave_;                                   // of the line under way
};

}  // namespace tarvoline::data
