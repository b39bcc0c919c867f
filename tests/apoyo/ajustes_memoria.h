// A settings tree without a file.
#pragma once

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/arbol_ajustes.h"
#include "platform/caja.h"

namespace tarvoline::pruebas {

class AjustesMemoria : public platform::ArbolAjustes {
  public:
    std::optional<std::string> leer(const platform::ClaveAjuste& donde) override {
        exigirLegible();
        const auto sitio = buscar(donde);
        if (sitio == ajustes_.end()) return std::nullopt;
        return sitio->valor;
    }

    void grabar(const platform::ClaveAjuste& donde, std::string_view valor) override {
        exigirLegible();
        if (fallarAlGrabar) throw platform::ErrorAjustes("read only");
        ++grabaciones;
        const auto sitio = buscar(donde);
        if (sitio != ajustes_.end()) {
            sitio->valor = valor;
        } else {
            ajustes_.push_back({donde, std::string(valor)});
        }
    }

    std::vector<std::string> lineasOmitidas() override { return std::exchange(omitidas, {}); }

    void borrar(const platform::ClaveAjuste& donde) override {
        exigirLegible();
        if (fallarAlGrabar) throw platform::ErrorAjustes("read only");
        const auto sitio = buscar(donde);
        if (sitio != ajustes_.end()) ajustes_.erase(sitio);
    }

    std::vector<platform::Ajuste> listar() override {
        exigirLegible();
        // Sections stay together, as in a file.
        std::vector<platform::Ajuste> orden;
        std::vector<std::pair<std::string, std::string>> secciones;
        const auto seccionDe = [](const platform::Ajuste& ajuste) {
            return std::pair(platform::plegarCaja(ajuste.donde.producto),
                             platform::plegarCaja(ajuste.donde.seccion));
        };
        for (const auto& ajuste : ajustes_) {
            if (std::find(secciones.begin(), secciones.end(), seccionDe(ajuste)) == secciones.end()) {
                secciones.push_back(seccionDe(ajuste));
            }
        }
        for (const auto& seccion : secciones) {
            std::copy_if(ajustes_.begin(), ajustes_.end(), std::back_inserter(orden),
                         [&](const auto& ajuste) { return seccionDe(ajuste) == seccion; });
        }
        return orden;
    }

    // For the bad days of a test.
    bool fallarAlGrabar = false;
    bool fallarAlLeer = false;
    int grabaciones = 0;
    std::vector<std::string> omitidas;  // what the next lineasOmitidas gives

  private:
    void exigirLegible() const {
        if (fallarAlLeer) throw platform::ErrorAjustes("unreadable");
    }

    std::vector<platform::Ajuste>::iterator buscar(const platform::ClaveAjuste& donde) {
        return std::find_if(ajustes_.begin(), ajustes_.end(), [&](const platform::Ajuste& otro) {
            return platform::igualPlegado(otro.donde.clave, donde.clave) &&
                   platform::igualPlegado(otro.donde.seccion, donde.seccion) &&
                   platform::igualPlegado(otro.donde.producto, donde.producto);
        });
    }

    std::vector<platform::Ajuste> ajustes_;
};

}  // namespace tarvoline::pruebas
