// A company by the path of its file alone, without a session: what tools work on.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "data/capa_datos.h"
#include "data/tabla_suelta.h"

namespace tarvoline::data {

// A file that is no company file, or a company without a number.
class ErrorEmpresa : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Puts the company of `ruta` in force: number, folder, head, level tables, and the decimals of its currency.
// Others may be at it, so gMultiusuario is raised. Nothing is written. Throws ErrorEmpresa,
// platform::ErrorArchivo.
void ponerEnVigor(CapaDatos& capa, std::string_view ruta);

// The lengths of the levels: NIVEL and AUX of the head, and the text "NivelesCosto" of the analytic accounts.
std::array<int, 9> nivelesDeCuentas(const CabeceraEmpresa& cabecera);
std::array<int, 9> nivelesDeAnalitica(std::string_view nivelesCosto);

// The data file of a table of the company in force, which lies in its folder under its name and number.
std::string rutaDeTabla(const CapaDatos& capa, std::string_view nombre);
// The same, opened. Throws platform::ErrorArchivo, ErrorDefinicion.
TablaSuelta abrirSuelta(const CapaDatos& capa, std::string_view nombre,
                        TablaSuelta::Acceso acceso = TablaSuelta::Acceso::mirar);

}  // namespace tarvoline::data
