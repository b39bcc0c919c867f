// The names of an archive as its central directory has them, byte by byte: libzip tells neither how a name is
// encoded nor that it holds a NUL.
//
// Format: APPNOTE 6.3, 4.3.12 to 4.3.16. Bytes behind the end record are passed over.
#pragma once

#include <string>
#include <vector>

#include "platform/archivos.h"

namespace tarvoline::zip {

struct NombreCrudo {
    std::string nombre;
    bool utf8 = false;  // the language flag
};

// codigo::bien, noEsZip (there is no end record) or estructura (there is one, but the directory does not
// fit). Throws ErrorArchivo when the file cannot be read.
int leerDirectorioCentral(platform::Archivo& archivo, std::vector<NombreCrudo>& nombres);

}  // namespace tarvoline::zip
