// The subcommands of qztabla, one file each. A subcommand adds itself to the program and, when it is called,
// leaves what is to be done in `tarea`, which gives the exit code and throws what stops it.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace tarvoline::tools {

using TareaTabla = std::function<int()>;

// Exit codes.
namespace salida {
inline constexpr int hecho = 0;
inline constexpr int fallo = 1;  // verificar: there are disagreements
inline constexpr int ordenMala = 2;
inline constexpr int ilegible = 3;  // verificar: what it should check cannot be read
inline constexpr int enUso = 4;     // somebody has open what should be changed; nothing was
}  // namespace salida

void anadirDefinir(CLI::App& programa, TareaTabla& tarea);
void anadirComunes(CLI::App& programa, TareaTabla& tarea);
void anadirPlan(CLI::App& programa, TareaTabla& tarea);
void anadirVolcar(CLI::App& programa, TareaTabla& tarea);
void anadirVerificar(CLI::App& programa, TareaTabla& tarea);
void anadirReindexar(CLI::App& programa, TareaTabla& tarea);
void anadirRecalcular(CLI::App& programa, TareaTabla& tarea);

}  // namespace tarvoline::tools
