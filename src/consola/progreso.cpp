#include "consola/progreso.h"

#include <iostream>

#include "consola/informe.h"
#include "core/formato.h"
#include "platform/terminal.h"

namespace tarvoline::consola {

Progreso::Progreso(core::Vista& vista, bool quiere) : vista_(vista) {
    if (quiere && platform::hayTerminalError()) {
        vista_.alCambiar = [this](core::Parte parte) { dibujar(parte); };
    }
}

Progreso::~Progreso() {
    vista_.alCambiar = nullptr;
    if (!ultima_.empty()) {
        std::cerr << "\r\x1b[K" << std::flush;
    }
}

void Progreso::dibujar(core::Parte parte) {
    if (parte != core::Parte::medidor && parte != core::Parte::transferencia) {
        return;
    }
    const auto& t = vista_.transferencia;
    std::string linea;
    if (t.activa) {
        linea = (t.subida ? "↑ " : "↓ ") + paraTerminal(t.nombre) + "  " + core::formatoEntero(t.hecho) +
                " / " + core::formatoEntero(t.total);
        if (t.segundos > 0) {
            const auto movidos = static_cast<double>(t.hecho - antes_);
            linea += "  " + core::formatoImporte(movidos / t.segundos / 1e6) + " MB/s";
        } else {
            antes_ = t.hecho;
        }
    } else if (vista_.medidor.visible) {
        linea = std::to_string(vista_.medidor.porcentaje) + "%";
    }
    if (linea != ultima_) {
        std::cerr << '\r' << linea << "\x1b[K" << std::flush;
        ultima_ = linea;
    }
}

}  // namespace tarvoline::consola
