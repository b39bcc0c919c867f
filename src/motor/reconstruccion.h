// Making a key file anew beside the old one, and swapping it in. Invariant:
//
// 10. The new file is built as nuevo.<name>, and takes the old one's place only while nobody else has that
//     open (its sentinel byte held exclusively). The old one is kept as anterior.<name>. The record counter
//     is carried over. An opener takes the sentinel and then makes sure that its file still bears the name,
//     so nobody goes on with a file that has lost it.
#pragma once

#include <string>
#include <string_view>

#include "motor/archivo_claves.h"

namespace tarvoline::motor {

std::string rutaNueva(std::string_view ruta);     // <folder>/nuevo.<name>
std::string rutaAnterior(std::string_view ruta);  // <folder>/anterior.<name>

enum class Cambio {
    hecho,
    ocupado,  // somebody has the old file open; nothing was changed
};

// Swaps `nuevo`, open and built under rutaNueva(ruta), in for `ruta`. When it returns with `hecho` both names
// have reached the disk. `nuevo` must not be given fewer record numbers than the old file gave: its counter
// is raised to that here. Throws ErrorArchivo or ErrorMotor; the file that bears the name is then the old one
// or the new one, whole.
Cambio cambiarPor(platform::SistemaArchivos& archivos, std::string_view ruta, ArchivoClaves& nuevo);

}  // namespace tarvoline::motor
