// The log of the programs: a rotating file, and standard error beside it.
#pragma once

#include <memory>
#include <string>

#include "core/registro.h"
#include "platform/archivos.h"

namespace tarvoline::core {

inline constexpr std::size_t bytesRegistro = std::size_t{1} << 20;  // of one file
inline constexpr std::size_t archivosRegistro = 5;  // kept beside the newest: tarvoline.1.log, ...

// Where logs and the status file lie: "tarvoline" below the user's state folder. Without final separator.
std::string carpetaRegistro();

// Writes `carpeta`/`nombre`.log, made when missing (folder 0700, files 0600), each line at once: time, level,
// process, text on one line. Standard error gets level and text too, unless `enConsola` is false. When the
// file cannot be opened, standard error alone is used; the log itself never throws.
std::unique_ptr<Registro> crearRegistro(platform::SistemaArchivos& archivos, const std::string& carpeta,
                                        const std::string& nombre = "tarvoline", bool enConsola = true);

}  // namespace tarvoline::core
