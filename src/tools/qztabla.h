// The subcommands of qztabla, one file each. A subcommand adds itself to the program and, when it is called,
// leaves what is to be done in `tarea`, which gives the exit code and throws what stops it.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace tarvoline::tools {

using TareaTabla = std::function<int()>;

void anadirDefinir(CLI::App& programa, TareaTabla& tarea);
void anadirComunes(CLI::App& programa, TareaTabla& tarea);
void anadirPlan(CLI::App& programa, TareaTabla& tarea);

}  // namespace tarvoline::tools
