// The currency table (Moneda.QZF, Moneda1.QZF): ten records of 64 bytes, docs/formats.md. Row 0 is the base
// currency, row 1 the second one. Texts are UTF-8.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "data/capa_datos.h"

namespace tarvoline::data {

inline constexpr std::size_t bytesMoneda = 64;

struct FilaMoneda {
    std::optional<int> decimales;  // of the currency; nothing: the file holds no digit
    std::string nombre;            // 22 characters
    std::string abreviatura;       // 3
    std::string texto;             // 25
    std::int32_t numero = 0;
    double cambio = 0;                    // units of the base currency for one of this
    std::optional<int> decimalesEnVigor;  // what amounts are rounded to

    bool libre() const { return nombre.empty() && abreviatura.empty(); }
    bool operator==(const FilaMoneda&) const = default;
};

using TablaMonedas = std::array<FilaMoneda, numeroMonedas>;

// Bytes that are not there count as zero.
FilaMoneda interpretarMoneda(std::string_view bytes);
// Exactly bytesMoneda bytes; texts are cut or filled with blanks.
std::string componerMoneda(const FilaMoneda& fila);
TablaMonedas interpretarMonedas(std::string_view bytes);
// A row that another program is writing is waited for. Throws platform::ErrorArchivo.
TablaMonedas leerMonedas(CapaDatos& capa, std::string_view ruta);

// The currency file of the company in force, by its ARCHIVOMONEDABASE (RutaDatoComun).
std::string rutaMonedas(CapaDatos& capa);
// Takes CapaDatos::monedas from that file. One that cannot be read leaves it empty, and is told to
// CapaDatos::avisar. Tables are opened around every operation: a file that was found before and has kept its
// size and time is not looked for again.
void cargarMonedas(CapaDatos& capa);
// The same for who only looks: the file of the setting, else the one that ships; nothing is stored or copied.
void mirarMonedas(CapaDatos& capa);

}  // namespace tarvoline::data
