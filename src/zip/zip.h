// Zip archives for the packer and the restorer: the operations, result codes and progress that the workflows
// know.
//
// Format: PKWARE APPNOTE 6.3 (deflate, Zip64), entry names in UTF-8 with the language flag. Writing goes
// through the platform's file layer; files are compressed side by side and handed to the archive as finished
// entries.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/archivos.h"

namespace tarvoline::zip {

// Result codes. 0 is success; codes above 100 are errors.
namespace codigo {
inline constexpr int bien = 0;
inline constexpr int entradasOmitidas = 40;  // unpacking: encrypted or unsupported entries were skipped
inline constexpr int noEsZip = 100;
inline constexpr int estructura = 110;  // damaged archive, or a name that would leave the target folder
inline constexpr int memoria = 120;
inline constexpr int nadaQueHacer = 140;  // nothing matched
inline constexpr int discoLleno = 150;
inline constexpr int abortado = 190;   // the caller's progress asked to stop
inline constexpr int escritura = 250;  // the archive could not be written, for another reason than room
// Packing: an input could not be read, the others are in the archive. Listing and unpacking: the archive
// could not be read, or a file below the target could not be written.
inline constexpr int errorArchivo = 400;
}  // namespace codigo

// One file on disk and the name that it gets in the archive ("/" separates).
struct Entrada {
    std::string origen;
    std::string nombre;
};

struct EntradaListada {
    std::string nombre;          // as the archive has it, "/" in place of "\"
    std::uint64_t longitud = 0;  // uncompressed, as declared
    std::uint64_t comprimida = 0;
    bool cifrada = false;
    bool esDirectorio = false;
};

// `hecho` of `total` bytes so far. Return false to stop the run (codigo::abortado).
using Progreso = std::function<bool(std::uint64_t hecho, std::uint64_t total)>;

class Zip {
  public:
    explicit Zip(platform::SistemaArchivos& archivos) : archivos_(archivos) {}

    std::string destino;     // path of the archive
    int nivel = 9;           // 0..9
    bool recursivo = false;  // folders in the list go in with all that is below them, empty folders too
    Progreso progreso;
    // Bytes that the packer's buffers may hold together; a file that does not fit is compressed in pieces.
    std::uint64_t presupuesto = std::uint64_t{256} << 20;
    unsigned hilos = 0;  // 0 = as many as the machine has

    // Adds to the archive at `destino` (made when missing) what `lista` names relative to `base`: masks or
    // names of files, and folders when `recursivo`. An entry of the same name is replaced; one whose new
    // content cannot be read keeps the old (codigo::errorArchivo). A failed run leaves the archive as it was
    // before.
    int comprimir(std::string_view base, const std::vector<std::string>& lista);
    // Inputs of the last comprimir that could not be read.
    const std::vector<std::string>& ilegibles() const { return ilegibles_; }

    // Lists the archive in its own order.
    int listar(std::vector<EntradaListada>& entradas);
    // Unpacks every file below `carpeta`. An absolute name, a name with a "..", or two entries of one name
    // give codigo::estructura before anything is written; an entry that is larger than it declares is stopped
    // there.
    int descomprimir(std::string_view carpeta);

  private:
    platform::SistemaArchivos& archivos_;
    std::vector<std::string> ilegibles_;
};

// The explanation of a code: the first entry of the fixed table that contains the code's digits, a line feed
// and `texto515`; "" when none contains them.
std::string TextoErrorZip(int codigo, std::string_view texto515);

}  // namespace tarvoline::zip
