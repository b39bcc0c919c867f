// One operation on a company file: open shared, do it, close, and try again while another program holds what
// it needs.
#pragma once

#include <functional>
#include <string_view>

#include "data/capa_datos.h"
#include "platform/archivos.h"

namespace tarvoline::data {

using OperacionArchivo = std::function<void(platform::Archivo&)>;

// Opens the file for reading, runs `leer` and closes it. A held range is waited for, at most
// CapaDatos::reintentosEmpresa times. False when the tries are used up or the file cannot be read at all.
bool leerEmpresa(CapaDatos& capa, std::string_view ruta, const OperacionArchivo& leer);
// The same, for who cannot go on without: throws the last ErrorArchivo.
void exigirEmpresa(CapaDatos& capa, std::string_view ruta, const OperacionArchivo& leer);

// The same for reading and writing, `rango` being locked with gMultiusuario while `cambiar` runs: the whole
// file, or a part that is enough to keep others who change it away. Throws ErrorArchivo permisoDenegado when
// the lock could not be had: without it nothing is changed. Another failure is told to CapaDatos::avisar and
// gives false.
bool cambiarEmpresa(CapaDatos& capa, std::string_view ruta, const OperacionArchivo& cambiar,
                    platform::Rango rango = platform::todoElArchivo);
// The same, for who cannot go on without: throws the last ErrorArchivo.
void exigirCambioEmpresa(CapaDatos& capa, std::string_view ruta, const OperacionArchivo& cambiar,
                         platform::Rango rango = platform::todoElArchivo);

// Runs `paso` once while the whole file is locked (with gMultiusuario): work on other files that one program
// does at a time. Only the lock is tried again; what `paso` throws passes. Throws ErrorArchivo when the lock
// could not be had.
void conEmpresaBloqueada(CapaDatos& capa, std::string_view ruta, const std::function<void()>& paso);
// The same while a byte of a data file (.QZD) is locked that no record lies at: programs that look for a row
// and make it when it is missing take turns, while others read and write the table. Always locks.
void conTurnoEnTabla(CapaDatos& capa, std::string_view ruta, const std::function<void()>& paso);

}  // namespace tarvoline::data
