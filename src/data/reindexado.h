// A table's key file made anew from its records, and swapped in for the old one.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "data/verificacion.h"

namespace tarvoline::data {

struct Reindexado {
    enum class Fin {
        hecho,
        enUso,      // somebody has the table or its keys open; nothing was changed
        sinClaves,  // the table has no keys
        ajeno,      // what bears the key file's name is of another format; it was left alone
    };
    Fin fin = Fin::hecho;
    std::int64_t registros = 0;  // keyed
    // What the old keys disagreed with, and records that they did not know at all: those are in the keys now.
    // Without `clavesLeidas` (old keys missing, damaged or of another definition) nobody can tell which.
    bool clavesLeidas = true;
    std::uint64_t discrepancias = 0;
    std::vector<std::int64_t> adoptados;
    std::string anterior;  // where the old key file is kept; empty when there was none
};

// Nobody else may have the table open: it is held for this alone until all is done. The new file is built as
// nuevo.<name> (one left over is replaced), held against the records, and swapped in (motor::cambiarPor); the
// record counter goes on. Cut short at any moment the old file or the new one bears the name, whole.
// `alDiscrepar` gets what is wrong with the old keys. Throws platform::ErrorArchivo, motor::ErrorMotor; the
// old keys are then in place.
Reindexado reindexarTabla(platform::SistemaArchivos& archivos, const std::string& rutaDatos,
                          const std::shared_ptr<const DefinicionTabla>& definicion,
                          const AlDiscrepar& alDiscrepar, const Progreso& progreso = {});

}  // namespace tarvoline::data
