// A settings store in memory, with names folded as every store folds them. It can be told to fail.
#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "core/texto.h"
#include "platform/arbol_ajustes.h"

namespace tarvoline::pruebas {

class AjustesMemoria : public platform::ArbolAjustes {
  public:
    bool fallarAlLeer = false;
    bool fallarAlGrabar = false;
    int grabaciones = 0;

    std::optional<std::string> leer(const platform::ClaveAjuste& donde) override {
        if (fallarAlLeer) {
            throw platform::ErrorAjustes("the settings cannot be read");
        }
        const auto lugar = buscar(donde);
        return lugar == valores_.end() ? std::nullopt : std::optional(lugar->valor);
    }
    void grabar(const platform::ClaveAjuste& donde, std::string_view valor) override {
        exigirEscritura();
        ++grabaciones;
        const auto lugar = buscar(donde);
        if (lugar == valores_.end()) {
            valores_.push_back({donde, std::string(valor)});
        } else {
            lugar->valor = valor;
        }
    }
    void borrar(const platform::ClaveAjuste& donde) override {
        exigirEscritura();
        if (const auto lugar = buscar(donde); lugar != valores_.end()) {
            valores_.erase(lugar);
        }
    }
    std::vector<platform::Ajuste> listar() override { return valores_; }

  private:
    void exigirEscritura() const {
        if (fallarAlGrabar) {
            throw platform::ErrorAjustes("the settings cannot be written");
        }
    }
    std::vector<platform::Ajuste>::iterator buscar(const platform::ClaveAjuste& donde) {
        return std::find_if(valores_.begin(), valores_.end(), [&](const platform::Ajuste& ajuste) {
            return core::igualSinCaja(ajuste.donde.producto, donde.producto) &&
                   core::igualSinCaja(ajuste.donde.seccion, donde.seccion) &&
                   core::igualSinCaja(ajuste.donde.clave, donde.clave);
        });
    }

    std::vector<platform::Ajuste> valores_;
};

}  // namespace tarvoline::pruebas
