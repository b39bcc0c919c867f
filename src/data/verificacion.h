// Whether a table is sound: its data file, its key file, and each against the other.
//
// Nothing is changed, and others may work on meanwhile. Only who makes the keys anew or empties them is kept
// out (the data file's "inserting" byte is held shared). Work under way stands for a moment in one file
// and not yet in the other, so what disagrees is looked at again, several times within about a second unless
// nobody else has the files open, and only what stays as it is counts.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "data/tabla_suelta.h"

namespace tarvoline::data {

enum class Desacuerdo {
    clavesAusentes,      // there are records and no key file
    clavesAjenas,        // the key file is of another format
    clavesDannadas,      // it is damaged, or cannot be opened; `texto` tells more where more is known
    clavesDeOtra,        // other keys than the definition's; `texto` says which
    contadorBajo,        // the record counter (`registro`) is below the number of places (`texto`)
    registroCortado,     // the last record (`registro`) has but `texto` bytes
    entradaSinRegistro,  // `clave` has the entry `texto` for a record that is not alive
    registroSinEntrada,  // a record that `clave` should have under `esperado` and has not
    otraClave,           // `clave` has it under `texto`, the record says `esperado`
    entradaDeMas,        // `clave` has it under `texto`, too
};

// Key texts are Windows-1252, without the blanks at their end.
struct Discrepancia {
    std::int64_t registro = 0;
    Desacuerdo que{};
    int clave = 0;  // of the three about one record: 0 means all keys of the table
    std::string texto;
    std::string esperado;
    EstadoRegistro estado = EstadoRegistro::vivo;  // of the record
    auto operator<=>(const Discrepancia&) const = default;
};
// In words, Spanish, UTF-8, one line.
std::string frase(const Discrepancia& discrepancia);

using AlDiscrepar = std::function<void(const Discrepancia&)>;

struct Verificacion {
    std::int64_t vivos = 0;
    std::int64_t anulados = 0;
    std::int64_t sinEscribir = 0;  // one cut off among them
    bool clavesCotejadas = false;  // false: no key file that could be held against the records
    std::uint32_t contador = 0;
    std::vector<std::uint64_t> entradas;  // key n at n - 1
    std::string huella;                   // SHA-256 of what volcar() gives, hexadecimal, lower case
    std::uint64_t discrepancias = 0;
    bool sana() const { return discrepancias == 0; }
};

// `alDiscrepar` gets every disagreement, those of records in their order. Throws platform::ErrorArchivo when
// the table cannot be read (permisoDenegado also while somebody makes its keys anew). Memory: less than a bit
// a record and key, and what stands about up to 262,144 records at a time where there are disagreements.
Verificacion verificarTabla(platform::SistemaArchivos& archivos, TablaSuelta& tabla,
                            const AlDiscrepar& alDiscrepar, const Progreso& progreso = {});
// The same against the key file at `rutaClaves`.
Verificacion verificarTabla(platform::SistemaArchivos& archivos, TablaSuelta& tabla,
                            const std::string& rutaClaves, const AlDiscrepar& alDiscrepar,
                            const Progreso& progreso = {});

}  // namespace tarvoline::data
