// The subcommands of qztabla on a whole company, by its file (.QZT).
#pragma once

#include <string>

namespace tarvoline::tools {

// Checks the nine tables of the company as "verificar" does each, then its totals. Returns the exit code.
int verificarEmpresa(const std::string& ruta);

}  // namespace tarvoline::tools
