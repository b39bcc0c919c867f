// Fields of a company file by name: the head record, the address block behind it up to byte 1024, and for
// every other name the text section (data/seccion_textos.h).
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "data/capa_datos.h"

namespace tarvoline::data {

enum class TipoNombrado {
    texto = 0,
    simple = 2,
    doble = 3,
    entero = 4,  // 32-bit, always 4 bytes whatever the length of the field says
    fecha = 5,   // stored date, shown dd/mm/yy; cannot be changed by name
    texto8 = 8,  // as texto
    byte = 9,
    protegido = 21  // reads as "", writing does nothing
};

struct CampoNombrado {
    std::string_view nombre;  // in upper case, but for one that is therefore never found
    std::size_t posicion;     // from 1
    std::size_t longitud;
    TipoNombrado tipo;
};

// All names that have a position.
std::span<const CampoNombrado> camposNombrados();
// The field of that name, its case ignored (Spanish letters too); nothing when it has no position.
std::optional<CampoNombrado> buscarCampoNombrado(std::string_view nombre);

class VistaNombrada {
  public:
    explicit VistaNombrada(CapaDatos& capa) : capa_(capa) {}

    // The value as text, from the company in force: texts with all their characters, numbers with a point,
    // dates dd/mm/yy ("" when there is none). A name without position is read from the text section. With no
    // company in force "No hay una empresa abierta"; a file that cannot be read gives "".
    std::string GetTotal(std::string_view nombre);
    // Writes a value; an empty text counts as 0 in a number, one that does not fit leaves the field as it
    // is. With no company in force nothing is done. Throws ErrorArchivo permisoDenegado when the file stays
    // held.
    void PutTotal(std::string_view nombre, std::string_view valor);

  private:
    CapaDatos& capa_;
};

// The text of a number: a point, no leading blank, at most `cifras` significant digits (15 for a double, 7
// for a single), no trailing zeros, "0.5" and not ".5", an exponent ("1.5E+15") only from 1E+15.
std::string textoDeNumero(double valor, int cifras = 15);

}  // namespace tarvoline::data
