// Small routines that the data layer and the link share.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/ajustes.h"
#include "core/carpetas.h"
#include "core/texto.h"
#include "data/capa_datos.h"

namespace tarvoline::data {

// Halves go away from zero.
double Redondear(double valor, int decimales);
// With the decimals of the base currency of the company in force.
double Redondear(const CapaDatos& capa, double valor);

// "LIBRO MAYOR" gives "Libro Mayor".
std::string NombrePropio(std::string_view texto);

// The plain text of a masked four-character field: codes 1 to 127 and 128 to 254 change places, a byte 0
// counts for nothing; blanks, or a byte 0 at the head, mean no password.
std::string DesenmascararClave(const core::TextoAnsi& guardada);
// The inverse: four bytes, filled with byte 0 ("" gives four blanks). Throws std::invalid_argument for more
// than four characters or one that has no masked form.
core::TextoAnsi EnmascararClave(std::string_view clave);

// "&" becomes "&#38;"; "<", ">" and every character above code 126 become "&#" code ";", the code being
// that of Windows-1252 (outside it, the Unicode number).
std::string EscaparXml(std::string_view texto);

// Items of a reply that is an XML list (core/xml_comun.h). One that cannot be read is told in a box and gives
// none.
std::vector<std::string> ListaDeXml(const CapaDatos& capa, std::string_view utf8);

// The path for the commands of the index engine, which takes long names as they are: without zero bytes at
// the end.
std::string NombreCorto(std::string_view ruta);

using Tabla = std::vector<std::vector<std::string>>;
// Lines (ended by CR LF or CR) by cells; every row is as wide as the widest. A comma goes through
// PartirLinea. An empty text gives one empty cell; an ending line break gives a last, empty line.
Tabla TextoATabla(std::string_view texto, std::string_view separador);
// Fields of one line, trimmed: a double quote opens a field that reaches to the next double quote; line
// feeds are passed over.
std::vector<std::string> PartirLinea(std::string_view linea, char separador = ',');

// Upper case byte by byte, with the letters of Windows-1252: lengths and places stay.
core::TextoAnsi MayusculasAnsi(const core::TextoAnsi& texto);
std::string MayusculasAnsi(std::string_view bytesAnsi);

// The routines of the core under the names that the data layer knows them by.
inline bool ExisteArchivo(const core::Carpetas& carpetas, std::string_view ruta) {
    return carpetas.ArchivoExiste(ruta);
}
inline void CrearCarpetas(const core::Carpetas& carpetas, std::string_view ruta) {
    carpetas.CrearDirectorios(ruta);
}
inline std::string CarpetaPrograma(const core::Carpetas& carpetas) {
    return carpetas.DirectorioPrograma();
}
inline std::string CarpetaAplicacion(const core::Carpetas& carpetas, std::string_view subcarpeta = {}) {
    return carpetas.CarpetaUsuario(subcarpeta);
}
inline std::string CarpetaComun(const core::Carpetas& carpetas, std::string_view subcarpeta = {}) {
    return carpetas.CarpetaComun(subcarpeta);
}
inline core::ValorAjuste LeerAjuste(const core::Ajustes& ajustes, std::string_view clave,
                                    std::string_view seccion = {}, std::string_view defecto = {},
                                    std::string_view producto = {}) {
    return ajustes.LeerRegistro(clave, seccion, defecto, producto);
}
// A store that cannot be written is told in a box; the work goes on.
void GrabarAjuste(CapaDatos& capa, std::string_view clave, std::string_view valor,
                  std::string_view seccion = {}, std::string_view producto = {});

}  // namespace tarvoline::data
