// The records of a table as text: one line a living record in order of number, tab-separated, UTF-8, each
// ended by LF. The first line has the titles: REGISTRO, then those of the fields. A tab, CR, LF and backslash
// within a value are \t, \r, \n and \\. Removed records and places without content are left out.
//
// Texts stand without the blanks at their end and cut at a zero byte; dates as 2024-12-31 (none: nothing, one
// that is none: as stored); numbers with a point, in up to 15 digits.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "data/tabla_suelta.h"

namespace tarvoline::data {

inline constexpr std::string_view tituloNumero = "REGISTRO";

// The value of a field from its text in gCampos, UTF-8, not escaped.
std::string valorVolcado(const CampoTabla& campo, std::string_view texto);
// Appends `valor` escaped.
void anadirEscapado(std::string_view valor, std::string& texto);
// The line of titles, and that of a record, appended.
void anadirTitulos(const DefinicionTabla& definicion, std::string& texto);
void anadirLinea(const DefinicionTabla& definicion, std::int64_t numero,
                 const std::vector<std::string>& campos, std::string& texto);

// Hands the whole text to `escribir` in pieces. Throws platform::ErrorArchivo.
void volcar(TablaSuelta& tabla, const std::function<void(std::string_view)>& escribir,
            const Progreso& progreso = {});

}  // namespace tarvoline::data
