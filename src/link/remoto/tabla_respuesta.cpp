#include "link/remoto/tabla_respuesta.h"

#include "core/texto.h"
#include "link/importe_texto.h"

namespace tarvoline::link::remoto {

TablaRespuesta::TablaRespuesta(std::string_view respuesta) {
    bool primera = true;
    for (std::string linea : core::Partir(respuesta, "\n")) {
        if (linea.ends_with('\r')) linea.pop_back();
        if (core::Recortar(linea).empty()) continue;
        auto celdas = core::Partir(linea, "\t");
        if (primera) {
            for (std::size_t i = 0; i < celdas.size(); ++i)
                columnas_.emplace(core::Mayusculas(core::Recortar(celdas[i])), i);
        } else {
            filas_.push_back(std::move(celdas));
        }
        primera = false;
    }
}

const std::string& TablaRespuesta::texto(std::size_t fila, std::string_view columna) const {
    static const std::string nada;
    const auto suya = columnas_.find(columna);
    const auto& celdas = filas_.at(fila);
    return suya == columnas_.end() || suya->second >= celdas.size() ? nada : celdas[suya->second];
}

double TablaRespuesta::numero(std::size_t fila, std::string_view columna) const {
    return importeDeTexto(texto(fila, columna));
}

}  // namespace tarvoline::link::remoto
