// New companies: the choice of number and name, and the files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "data/capa_datos.h"

namespace tarvoline::data {

// Makes the company file `ruta` (".QZT" is added when missing, the setting DATOS_DIR put before a bare name)
// and its nine empty tables; gives the path of the file made, which is another one when `ruta` exists ("~1",
// "~2", ...).
//
// `opciones` are items divided by "/", each a letter (case ignored), any one character and the value: A year
// (2), N account levels (5), X auxiliaries (4), M base currency file (number), P first month (2), I tax (1),
// Z plan to copy: 0 and 1 plan 00, 4 to 6 plan 02, others plan 01. C and unknown letters have no effect; an
// item without value leaves the default, but Z asks for a plan.
//
// Two programs that create companies at the same time get different numbers: the number is claimed by
// creating its PLANCnn.QZD. Throws ErrorDatos (no number, no directory) and ErrorArchivo; a plan that is not
// in the program directory is found out before anything is written.
std::string CrearEmpresaArchivos(CapaDatos& capa, std::string_view ruta, std::string_view opciones = {});

// The first number 01..99 that no table in `directorio` carries (masks "?????nn.*"), other than `evitar`.
// Without a directory the setting DATOS_DIR. Throws ErrorDatos.
std::string NumeroEmpresaLibre(CapaDatos& capa, std::optional<std::string_view> directorio = std::nullopt,
                               std::string_view evitar = {});
// The same with "" for none.
std::string NumeroLibre(platform::SistemaArchivos& archivos, std::string_view directorio);

// A path that does not exist: `ruta` itself, else its name with "~1", "~2", ... before the extension. `ruta`
// ends in an extension of three characters.
std::string NombreCabeceraLibre(platform::SistemaArchivos& archivos, std::string_view ruta);
// The same for a name in a folder; gives the name alone.
std::string NombreLibre(platform::SistemaArchivos& archivos, std::string_view carpeta,
                        std::string_view nombre);

// The two characters at the start of a company file; fewer when the file has fewer. A name without separator
// is looked for in `directorioDatos`; ".QZT" is added when it is missing. Throws ErrorArchivo.
std::string NumeroEmpresa(platform::SistemaArchivos& archivos, std::string_view archivo,
                          std::string_view directorioDatos = {});

// The trimmed path of a company file from what a person or a setting names: with ".QZT" and, when it holds
// no separator, below the setting DATOS_DIR.
std::string rutaCabecera(const core::Ajustes& ajustes, std::string_view nombre);

}  // namespace tarvoline::data
