// Text of the program: UTF-8 inside, Windows-1252 in the files of the old world, and the small conversions
// that every floor needs.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::core {

// Bytes in Windows-1252, one a character. A type of its own, so that it never meets UTF-8 unconverted.
class TextoAnsi {
  public:
    TextoAnsi() = default;
    explicit TextoAnsi(std::string bytes) : bytes_(std::move(bytes)) {}
    const std::string& bytes() const { return bytes_; }
    std::string& bytes() { return bytes_; }
    std::size_t longitud() const { return bytes_.size(); }
    bool operator==(const TextoAnsi&) const = default;

  private:
    std::string bytes_;
};

// A decomposed accent is composed first; a character without a place in the code page becomes "?".
// Bytes that are no UTF-8 are taken as Windows-1252.
TextoAnsi aAnsi(std::string_view utf8);
// The five codes that Windows-1252 leaves open become the control characters of the same code.
std::string aUtf8(const TextoAnsi& ansi);
std::string aUtf8(std::string_view bytesAnsi);

// Unicode code points of a UTF-8 text; a byte that starts no character stands for itself.
std::u32string codigos(std::string_view utf8);
std::string deCodigos(std::u32string_view codigos);
// Characters, not bytes.
std::size_t longitudTexto(std::string_view utf8);
// `cuantos` characters from `desde`, which counts from 1; what lies outside is left out.
std::string Mid(std::string_view utf8, std::size_t desde, std::size_t cuantos = std::string_view::npos);

// Case of the letters of Latin-1 and Latin Extended-A, one letter for one, so that upper and lower case undo
// each other. Letters without a partner of their own stay ("ß", "µ", "ƒ", the dotless i), and so do bytes
// that are no UTF-8.
std::string Mayusculas(std::string_view utf8);
std::string Minusculas(std::string_view utf8);
bool igualSinCaja(std::string_view a, std::string_view b);

std::string Recortar(std::string_view texto);  // blanks (code 32) at both ends
bool empiezaPor(std::string_view texto, std::string_view comienzo);
// Exactly the five letters at the start, case as written: the service's sign of failure.
inline bool esError(std::string_view texto) {
    return texto.substr(0, 5) == "ERROR";
}
// `n` separators give n + 1 parts: an empty text gives one empty part. An empty separator divides nothing.
std::vector<std::string> Partir(std::string_view texto, std::string_view separador);
// Every `viejo`, from left to right and never inside a replacement. An empty `viejo` changes nothing.
std::string Sustituir(std::string_view texto, std::string_view viejo, std::string_view nuevo);

// The leading number of a text: blanks, tabs and line feeds are passed over wherever they stand, then an
// optional sign, digits, one point, an exponent; the first other character ends it. 0 when there is none, and
// for a number that is too large for a double.
double Val(std::string_view texto);
// Val as a 32-bit integer, rounded half to even; what does not fit gives 0.
std::int32_t ValEntero(std::string_view texto);
// A number in `digitos` or more decimal digits, filled with zeros behind its sign.
std::string conCeros(std::int64_t numero, int digitos);
// Every byte but the unreserved ones of RFC 3986 as "%" and two hexadecimal digits.
std::string codificarUrl(std::string_view utf8);

}  // namespace tarvoline::core
