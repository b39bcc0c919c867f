// The status file of unattended runs, for whoever monitors them: one JSON object (RFC 8259, UTF-8) about the
// last run that ended.
//
//   "programa"     "tarvoline"
//   "version"      "2.0.0"
//   "inicio"       when it started and ended, UTC (ISO 8601: "2024-05-31T18:30:00Z")
//   "fin"
//   "codigo"       exit code (core/inicio.h)
//   "resultado"    "bien", "fallida" (something was not sent), "interrumpida" (a signal or the program's own
//                  end), "no arranca"
//   "motivo"       why it did not start or ended early; "" otherwise
//   "reanudacion"  null, or the interrupted upload it went on with: "ruta", "resultado", "texto"
//   "empresas"     one object a pending company: "ranura" (1..100), "ruta", "resultado" ("enviada" or
//                  "fallida"), "texto" (why it failed)
#pragma once

#include <chrono>
#include <string>

#include "core/resumen_ejecucion.h"
#include "platform/archivos.h"

namespace tarvoline::core {

struct EstadoEjecucion {
    std::chrono::system_clock::time_point inicio, fin;
    int codigo = 0;
    std::string motivo;
    ResumenEjecucion resumen;
};

inline constexpr const char* nombreEstadoEjecucion = "estado.json";

std::string componerEstadoEjecucion(const EstadoEjecucion& ejecucion);
// A reader sees the old file or the new, never a part; only its owner may read it; the folder is made when
// missing. It is not forced to the device: a run with nothing to do would mostly wait for that. Throws
// platform::ErrorArchivo.
void escribirEstadoEjecucion(platform::SistemaArchivos& archivos, const std::string& ruta,
                             const EstadoEjecucion& ejecucion);

}  // namespace tarvoline::core
