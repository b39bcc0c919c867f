// The one-time credential's scrambling, shared by the client that makes it and the service that reads it, and
// the escaping of file names.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::core {

// A source of small random values: 1..62.
using FuenteAleatoria = std::function<int()>;

// The process's own source: uniform in [0,1) times 100, rounded, kept if it lies in 1..62. The values only
// vary the text; they are no secret of any strength.
FuenteAleatoria fuenteAleatoria();
std::vector<int> BytesAleatorios(int cuantos, const FuenteAleatoria& fuente);

// "0".."9" = 1..10, "A".."Z" = 11..36, "a".."z" = 37..62; any other character 0, any other value the code 0.
int CaracterAValor(char caracter);
char ValorACaracter(int valor);

// 2n+1 characters for a text of n. Throws std::overflow_error when a filler would go below 0 (very long
// texts).
std::string CodificarClave(std::string_view texto, const FuenteAleatoria& fuente);
// The text that was scrambled; nothing when `credencial` is no scrambling at all (even length, foreign
// characters).
std::optional<std::string> DecodificarClave(std::string_view credencial);

// "&" becomes "&#38;", then each character of code 127 to 255 of Windows-1252 "&#" code ";" (characters
// outside the code page by their Unicode number). Everything else stays.
std::string CodificarNombre(std::string_view nombre);
// The inverse, once: what the service does with a name that arrives.
std::string DecodificarNombre(std::string_view nombre);

}  // namespace tarvoline::core
