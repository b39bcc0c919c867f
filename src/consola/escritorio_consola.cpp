#include "consola/escritorio_consola.h"

#include <csignal>
#include <iostream>

#include "consola/informe.h"
#include "consola/opciones.h"
#include "core/texto.h"

namespace tarvoline::consola {

namespace {

// One line for a terminal from a box's text.
std::string enUnaLinea(std::string_view texto) {
    std::string linea;
    for (const auto& renglon : core::Partir(core::Sustituir(texto, "\r", "\n"), "\n")) {
        if (const auto limpio = core::Recortar(renglon); !limpio.empty()) {
            linea += (linea.empty() ? "" : " | ") + paraTerminal(limpio);
        }
    }
    return linea;
}

}  // namespace

void EscritorioConsola::Mensaje(const core::Caja& caja) {
    const bool fallo = caja.icono == core::Icono::exclamacion || caja.icono == core::Icono::parada ||
                       core::esError(caja.texto);
    const auto linea = enUnaLinea(caja.texto);
    if (fallo) {
        fallar(linea);
    } else if (!mudo) {
        std::cerr << linea << '\n';
    }
}

void EscritorioConsola::fallar(const std::string& linea) {
    fallos_.push_back(linea);
    registro_.aviso(linea);
    std::cerr << linea << '\n';
}

bool EscritorioConsola::Preguntar(const core::Caja& caja, bool) {
    const auto linea = enUnaLinea(caja.texto) + (respuestaSi ? " [sí]" : " [no]");
    if (respuestaSi) {
        registro_.info(linea);
    } else {
        fallar(linea);
    }
    return respuestaSi;
}

bool EscritorioConsola::Confirmar(const core::Caja& caja) {
    // A retry without a person would go on for ever.
    fallar(enUnaLinea(caja.texto));
    return false;
}

std::optional<std::string> EscritorioConsola::Pedir(const core::Peticion& peticion) {
    registro_.aviso(enUnaLinea(peticion.texto));
    return std::nullopt;
}

bool EscritorioConsola::PedirDatos(core::EntradaDatos& datos) {
    for (auto& campo : datos.campos) {
        if (campo.tipo == core::TipoCampo::opcion) {
            datos.opcion = opcion;
            return true;
        }
        if (campo.tipo != core::TipoCampo::eleccion) {
            continue;
        }
        for (const auto& posible : campo.elecciones) {
            if (!eleccion.empty() && core::empiezaPor(posible, eleccion)) {
                campo.valor = posible;
                return true;
            }
        }
    }
    return false;
}

std::optional<std::string> EscritorioConsola::archivo() const {
    return archivoElegido.empty() ? std::nullopt : std::optional(archivoElegido);
}

std::optional<std::string> EscritorioConsola::ElegirArchivo(const core::EleccionArchivo&) {
    return archivo();
}

std::optional<std::string> EscritorioConsola::GuardarComo(const core::EleccionArchivo&) {
    return archivo();
}

std::optional<std::string> EscritorioConsola::ElegirCarpeta(std::string_view) {
    return archivo();
}

void EscritorioConsola::MostrarListado(const core::Listado& listado) {
    std::cout << listado.titulo << '\n' << listado.texto;
}

void EscritorioConsola::Abrir(std::string_view documento) {
    registro_.info(documento);
}

void EscritorioConsola::Turno() {
    const int cual = senal_();
    if (cual == SIGINT && estado_ != nullptr) {
        estado_->gDetener = true;
    } else if (cual != 0) {
        // Like the end of the machine: an upload under way keeps its record and goes on later.
        throw core::FinDePrograma{salida::senal + cual};
    }
}

}  // namespace tarvoline::consola
