// Dates as callers of the link give and see them.
#pragma once

#include <string>
#include <string_view>

#include "link/sesion.h"

namespace tarvoline::link {

// The stored form of "yymmdd", "dd/mm/yy" or "dd/mm/yyyy"; "" for a text of any other length. Throws
// ErrorEnlace fechaNoValida for what is no date, or lies outside the accounting year of the session's
// company.
std::string ValidarFecha(const Sesion& sesion, std::string_view valor);
// Throws ErrorEnlace fechaNoValida for a text that is no date.
[[noreturn]] void rechazarFecha(std::string_view valor);
// The stored form without any check.
std::string fechaSinComprobar(const Sesion& sesion, std::string_view valor);
// The stored form of any usual way to write a date: those above, a stored one, one digit for day or month, a
// four-digit year first ("2026-02-01"), "/", "-" or "." between; blanks around do not count. "" gives "".
// Throws ErrorEnlace fechaNoValida for a text that is no date.
std::string fechaDeTexto(const Sesion& sesion, std::string_view texto);
// "yymmdd" in digits of a stored date.
std::string fechaSinSiglo(std::string_view guardada);
// "dd/mm/yy" of a stored date; "" when there is none.
std::string fechaCorta(const Sesion& sesion, std::string_view guardada);
// The day of today, stored form.
std::string fechaDeHoy(const Sesion& sesion);
// Two-digit calendar year of a month of the accounting year (Enlace::año).
std::string añoDeMes(const Sesion& sesion, int mes);

}  // namespace tarvoline::link
