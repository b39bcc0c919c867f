// Turns the readable sources of the language and terms files into what the program reads: Windows-1252 with
// lines ended by CR LF. A build step; the program never runs it.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tarvoline::idioma {

// Texts by number, UTF-8.
using Tabla = std::map<int, std::string>;

// A source is refused. The message begins with its name, and the line where there is one.
class ErrorFuente : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// A source: lines of number, tab, text; "#" starts a comment line. Double quotes around a text keep the
// blanks at its ends. Refused: a line of another form, a number outside 1..2259 or given twice, blanks at the
// ends without quotes, a control character or one that Windows-1252 lacks. `nombre` is for the messages.
Tabla leerFuente(std::string_view nombre, std::string_view utf8);
// What the code relies on in single texts: the two that callers recognise as failures begin with "ERROR", the
// login title holds the product's name, the lists have their count of items.
void comprobarTextos(std::string_view nombre, const Tabla& tabla);
// Both languages hold the same numbers.
void comprobarPareja(std::string_view nombreUno, const Tabla& uno, std::string_view nombreOtro,
                     const Tabla& otro);
// The language file: a header line, the line of the "@", then one line a number up to the highest.
std::string componerArchivo(const Tabla& tabla);

// A document of running text (the terms): UTF-8 in, Windows-1252 with CR LF out.
std::string componerDocumento(std::string_view nombre, std::string_view utf8);

}  // namespace tarvoline::idioma
