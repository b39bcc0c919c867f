// Readable sources of definition files, which `qztabla definir` compiles:
//
//     # what the table is for
//     titulo LIBRO DIARIO
//     campo 1  fecha     FECHA
//     campo 2  texto 10  CUENTA
//     campo 6  doble     IMPORTE
//     clave 1  2(1,10) 1(1,6)
//
// "campo": position, kind (texto and its width, fecha, doble, simple, entero16, entero32), title; in the
// order of the record. "clave": number, then its segments: position of the field (first character,
// characters). "campos de FILE" stands in place of fields and takes those of another source.
#pragma once

#include <string>
#include <string_view>

#include "data/definicion_tabla.h"
#include "data/fuente_lineas.h"

namespace tarvoline::data {

// Throws ErrorFuente: a line of another form, a title or position given twice, keys that do not run from 1,
// a segment without a field or beyond its characters, one of a number (whose text varies in length), a key
// longer than the engine takes, no title, no field.
DefinicionTabla leerFuenteDefinicion(std::string_view archivo, std::string_view utf8,
                                     const LectorFuente& otra);

}  // namespace tarvoline::data
