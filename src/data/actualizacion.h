// The keeper of the files' version: says whether this program may open a company, and completes its files.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "data/capa_datos.h"

namespace tarvoline::data {

// The version of the files that this program writes and understands.
inline constexpr float VersionDatos = 5.0F;

// The answer of the check when all is well.
inline constexpr std::string_view respuestaBien = "OK";

// The nine tables of a company, as their files are named before the number.
inline constexpr std::array<std::string_view, 9> tablasEmpresa = {"PLANC", "EXTRA", "DATOS", "IVA01", "EFECT",
                                                                  "PRESU", "COSTO", "PLANA", "ANALI"};

class GuardaVersionDatos {
  public:
    explicit GuardaVersionDatos(CapaDatos& capa) : capa_(capa) {}

    // "OK", or a sentence for the user when the files are newer than the program: newer than VersionDatos
    // and than the setting "Version". A file that cannot be read, or is too short to tell, is "OK" here; the
    // opening finds out what is wrong with it.
    std::string Comprobar(std::string_view ruta) const;
    // Creates those of the nine data files that are missing, empty, beside the company file. Throws
    // ErrorArchivo.
    void Actualizar(std::string_view ruta) const;

  private:
    CapaDatos& capa_;
};

}  // namespace tarvoline::data
