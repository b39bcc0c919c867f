// Key texts of a record: the segments of each key, cut from the texts of its fields and joined without
// separator. In a key text a "\" counts as byte 31, since "\" parts the fields of a command.
#pragma once

#include <string>
#include <vector>

#include "data/definicion_tabla.h"

namespace tarvoline::data {

// Appends the text of key `clave`. `campos` by field number, as gCampos.
void anadirClave(const DefinicionTabla& definicion, int clave, const std::vector<std::string>& campos,
                 std::string& texto);
// Appends "\k1\k2...\kn", the texts of all keys.
void anadirClaves(const DefinicionTabla& definicion, const std::vector<std::string>& campos,
                  std::string& texto);
// Whether all fields that the key is made of are the same texts in both.
bool mismaClave(const DefinicionTabla& definicion, int clave, const std::vector<std::string>& unos,
                const std::vector<std::string>& otros);
bool esCampoDeClave(const DefinicionTabla& definicion, int campo);
// The highest key that begins with the field; 0: none.
int claveQueEmpiezaPor(const DefinicionTabla& definicion, int campo);

}  // namespace tarvoline::data
