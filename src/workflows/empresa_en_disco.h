// How a company lies on disk: its number, its tables, its images.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/archivos.h"

namespace tarvoline::workflows {

// Characters 6 and 7 of a table's file name; "" when it has none there.
std::string numeroDeTabla(std::string_view nombre);
// The name with characters 6 and 7 replaced. REQUIRES: at least seven characters.
std::string conNumeroDeTabla(std::string_view nombre, std::string_view numero);
// True for "five characters, `numero`, a point, anything" but "QZT"; `numero` is taken literally, case
// ignored.
bool esTablaDe(std::string_view nombre, std::string_view numero);
// Names of the tables of company `numero` in `carpeta`, sorted.
std::vector<std::string> tablasDeEmpresa(platform::SistemaArchivos& archivos, std::string_view carpeta,
                                         std::string_view numero);

// The two characters that name a company's tables: the first two bytes of a company file (blanks where it is
// shorter), or the digits of the name for VXCRM's "TOTALnn.XML".
std::string numeroDeEmpresa(platform::SistemaArchivos& archivos, std::string_view archivoEmpresa);
// True for VXCRM's company files, "TOTALnn.XML".
bool esEmpresaVXCRM(std::string_view archivoEmpresa);

}  // namespace tarvoline::workflows
