// Entries for all records of a table, put into its key file.
#pragma once

#include "data/tabla_suelta.h"
#include "motor/archivo_claves.h"

namespace tarvoline::data {

// `claves` is empty and its counter 0; `lugares` as lugaresDe() gives it. Every place takes its number, and
// those with a living record get their entries, some thousand places a commit; the counter follows, so that
// work cut short shows as a counter below the number of places. Returns how many records there were. Throws
// motor::ErrorMotor, also for what the file system refuses; what `leer` throws passes through.
std::int64_t clavarRegistros(const DefinicionTabla& definicion, std::int64_t lugares, const LeerBytes& leer,
                             motor::ArchivoClaves& claves, const Progreso& progreso = {});

}  // namespace tarvoline::data
