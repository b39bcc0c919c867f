// Environment variables of this process for the life of one object; the old values come back with its end.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tarvoline::pruebas {

class VariablesProceso {
  public:
    VariablesProceso() = default;
    ~VariablesProceso() {
        for (auto antes = anteriores_.rbegin(); antes != anteriores_.rend(); ++antes) {
            aplicar(antes->first, antes->second);
        }
    }
    VariablesProceso(const VariablesProceso&) = delete;
    VariablesProceso& operator=(const VariablesProceso&) = delete;

    void poner(const std::string& nombre, const std::string& valor) { cambiar(nombre, valor); }
    void quitar(const std::string& nombre) { cambiar(nombre, std::nullopt); }

  private:
    void cambiar(const std::string& nombre, const std::optional<std::string>& valor) {
        const char* antes = std::getenv(nombre.c_str());
        anteriores_.emplace_back(nombre, antes == nullptr ? std::nullopt : std::optional<std::string>(antes));
        aplicar(nombre, valor);
    }
    static void aplicar(const std::string& nombre, const std::optional<std::string>& valor) {
        if (valor) {
            ::setenv(nombre.c_str(), valor->c_str(), 1);
        } else {
            ::unsetenv(nombre.c_str());
        }
    }

    std::vector<std::pair<std::string, std::optional<std::string>>> anteriores_;
};

}  // namespace tarvoline::pruebas
