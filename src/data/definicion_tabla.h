// Definition files (.QZA): the fields and keys of a table, from 33-byte entries. docs/formats.md has the
// bytes.
//
// Fields are numbered from 1 in record order. A position is a second numbering, the one that the program
// speaks of ("position 12"), whatever the order of the fields in a version of the file. Names and titles are
// UTF-8.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/archivos.h"
#include "platform/marca_archivo.h"

namespace tarvoline::data {

inline constexpr int maxCamposTabla = 98;
inline constexpr int maxClaves = 10;
inline constexpr int maxSegmentos = 5;

// Two characters as a number: a character below "0" counts as absent, one above "9" extends the range
// (":0" is 100, "I1" 251). Anything else than two characters is filled with blanks, or cut.
int NumeroDeDosCaracteres(std::string_view texto);
// The inverse, for 0 to 789: ten units at most in the second place.
std::string DosCaracteres(int numero);

enum class FormaCampo { texto, entero16, entero32, simple, doble, fecha };
// How a type code is kept: 1 entero16; 2, 6 simple; 3, 7, 80-85 doble; 4 entero32; 5 fecha; others texto.
FormaCampo formaDeTipo(int tipo);

struct CampoTabla {
    std::string nombre;  // the column's title, without blanks at its ends
    int tipo = 0;
    int ancho = 0;           // declared; used by texts alone
    int bytes = 0;           // on disk
    int desplazamiento = 0;  // of the first byte in the record, from 0
    int posicion = 0;        // 0: none
    FormaCampo forma = FormaCampo::texto;
};

struct SegmentoClave {
    int campo = 0;     // field number
    int inicio = 1;    // first character of the field's text, 1-based
    int longitud = 0;  // characters
    bool operator==(const SegmentoClave&) const = default;
};

struct DefinicionTabla {
    std::string titulo;
    std::vector<CampoTabla> campos{1};                             // [0] is not used
    std::array<std::vector<SegmentoClave>, maxClaves + 1> claves;  // [0] is not used
    int gNumeroCampos = 0;
    int numeroClaves = 0;  // the highest key that has a segment
    std::int32_t gLongitudRegistro = 0;
    std::array<std::int16_t, 1024> gCampoDePosicion{};  // field number by position; 0: no such field

    const CampoTabla& campo(int numero) const { return campos.at(static_cast<std::size_t>(numero)); }
    // 0 when the definition has no such position, or no such title (case ignored).
    int campoDePosicion(int posicion) const;
    int campoDeNombre(std::string_view nombre) const;
    // Characters of a key, and of the longest one.
    int longitudClave(int clave) const;
    int longitudMayor() const;
};

// A definition file that is none; the text says what is wrong with it.
class ErrorDefinicion : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The parts of a definition in `bytes` (a whole file). Throws ErrorDefinicion: no field, more fields than
// maxCamposTabla or than the bytes hold, more than maxSegmentos in a key, a key that is none or longer than
// key files take, a segment
// without a field or without length. A segment may reach beyond its field's text: what is not there counts
// for nothing.
DefinicionTabla interpretarDefinicion(std::string_view bytes);
// The fields of `definicion` with the keys of the file `bytes`. Its key entries mean fields and positions of
// `definicion`. Throws ErrorDefinicion as above.
DefinicionTabla conClavesDe(const DefinicionTabla& definicion, std::string_view bytes);
// The file of a definition. `interpretarDefinicion` gives the same back.
std::string componerDefinicion(const DefinicionTabla& definicion);

// Parsed definitions by path. One that was read before is used again while its file is the same (its
// identity, size and time).
class CacheDefiniciones {
  public:
    explicit CacheDefiniciones(platform::SistemaArchivos& archivos) : archivos_(archivos) {}
    // Throws platform::ErrorArchivo, ErrorDefinicion.
    std::shared_ptr<const DefinicionTabla> leer(const std::string& ruta);

  private:
    struct Entrada {
        platform::MarcaArchivo marca;
        std::shared_ptr<const DefinicionTabla> definicion;
    };
    platform::SistemaArchivos& archivos_;
    std::map<std::string, Entrada> entradas_;
};

// The title in a definition file, in proper case ("Libro Mayor"). Throws platform::ErrorArchivo.
std::string TituloArchivo(platform::SistemaArchivos& archivos, std::string_view ruta);
// The names of the fields in the order of the file, with their blanks (23 characters); [0] is empty. Throws
// platform::ErrorArchivo.
void LeerNombresCampos(platform::SistemaArchivos& archivos, std::string_view ruta,
                       std::vector<std::string>& nombres);

}  // namespace tarvoline::data
