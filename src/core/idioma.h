// The language table: numbered texts from one file, read once at the start.
//
// File: Windows-1252, lines ended by CR LF. What stands before the first "@" is a free header; the line of
// that "@" is number 0, line N behind it is text N.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::core {

struct Entorno;

// A text number outside the table (error number 9).
class ErrorIndice : public std::out_of_range {
  public:
    static constexpr int numero = 9;
    using std::out_of_range::out_of_range;
};

// The file is missing, cannot be read, or holds no "@".
class ErrorIdioma : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class Textos {
  public:
    // Plain indexing: no default, no placeholder. Throws ErrorIndice beyond the highest index.
    const std::string& operator()(int numero) const;
    int indiceMayor() const { return static_cast<int>(textos_.size()) - 1; }
    void asignar(std::vector<std::string> textos) { textos_ = std::move(textos); }
    // Sets one text, widening the table as far as needed.
    void poner(int numero, std::string texto);
    // Widens to the upper bound, keeping what it holds.
    void ampliar(int indiceMayor);

  private:
    std::vector<std::string> textos_;
};

inline constexpr int textosMinimos = 1800;  // the highest index of a good file is this or more
inline constexpr int textosAmpliados = 2500;
inline constexpr int numeroTextoMayor = 2259;
// Texts that callers recognise as failures by their first five letters, "ERROR", in every language.
inline constexpr int textoFalloCopia = 179;
inline constexpr int textoFallo = 1250;

// The setting `language`: a name in the program directory, or a path.
std::string nombreIdioma(Entorno& entorno);
// Fills Estado::gTextos from the file `nombre`; a name without a separator lies in the program directory.
// Number 0 becomes the product's name. Throws ErrorIdioma, naming the path, when the file is missing, cannot
// be read or holds no "@".
void CargarIdioma(Entorno& entorno, std::string_view nombre);
// The check of the loaded table: a short one is warned of in a box, in fixed words, and widened so that every
// number can be read. The texts that mean failure begin with "ERROR" afterwards, whatever the file held.
void ComprobarIdioma(Entorno& entorno);
// True when the setting `language` names the Spanish file: decides the language of fixed messages.
bool idiomaEspanol(Entorno& entorno);
// The terms and conditions in the program's language. Throws ErrorIdioma naming the path.
std::string LeerTerminos(Entorno& entorno);

// A whole file in one piece, bytes as they stand.
std::string LeerArchivoEntero(Entorno& entorno, std::string_view ruta);

}  // namespace tarvoline::core
