// Records on disk and in gCampos: the text form of every field type, and the marks of a record that is not
// there.
//
// Numbers on disk are little-endian, floats IEEE 754, texts one byte a character (Windows-1252) and exactly
// as wide as their field. A number's text has a point, no blank, at most 15 significant digits (7 for
// singles), and an exponent only from 1E+15 on; what does not begin with a number reads as 0.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "data/definicion_tabla.h"

namespace tarvoline::data {

// The number in the first 2, 4, 4 or 8 characters; those that are missing count as zero bytes.
std::int16_t TextoAEntero(std::string_view texto);
std::int32_t TextoALargo(std::string_view texto);
float TextoASimple(std::string_view texto);
double TextoADoble(std::string_view texto);
// The eight characters of a double.
std::string DobleATexto(double valor);

// core::Val, quick for the short plain numbers that fields hold.
double valorDeTexto(std::string_view texto);
// textoDeNumero into a text whose buffer is kept.
void ponerTextoDeNumero(double valor, std::string& texto);

// A number that its field on disk cannot hold. Nothing has been written.
class ErrorCampo : public std::out_of_range {
  public:
    using std::out_of_range::out_of_range;
};

// The text form of a field from its `bytes`, as many as the field has.
void descifrarCampo(const CampoTabla& campo, std::string_view bytes, std::string& texto);
// The inverse, to `destino`, which has room for the field's bytes. Integers round half to even; a text is cut
// or filled with blanks. Throws ErrorCampo.
void cifrarCampo(const CampoTabla& campo, std::string_view texto, char* destino);

// All fields, by number; `campos` has an element for each already. `bytes` is a whole record.
void descifrarRegistro(const DefinicionTabla& definicion, std::string_view bytes,
                       std::vector<std::string>& campos);
void cifrarRegistro(const DefinicionTabla& definicion, const std::vector<std::string>& campos,
                    std::string& bytes);

// Left-justified in the field's length, if it is a text or a date; a number's text is taken as it stands.
void ajustarCampo(const CampoTabla& campo, std::string_view bytes, std::string& texto);
// Every field as many blanks as it has bytes.
void blanquearCampos(const DefinicionTabla& definicion, std::vector<std::string>& campos);

enum class EstadoRegistro {
    sinEscribir,  // zero bytes alone, or behind the end of the file: its number is given, its content not yet
    anulado,      // "ANULADO" at the head, the rest blank or zero
    vivo,
};
inline constexpr std::string_view marcaAnulado = "ANULADO";

// `bytes`: a record, or its beginning.
EstadoRegistro estadoDeRegistro(std::string_view bytes);
// Blanks and zero bytes alone: a place that holds nothing.
bool estaVacio(std::string_view bytes);

}  // namespace tarvoline::data
