#include "tools/diferencia_caminos.h"

#include <algorithm>
#include <stdexcept>

#include "core/texto.h"

namespace tarvoline::tools {

namespace {

bool coincide(const std::string& pedido, std::string_view suyo) {
    return pedido == "*" || pedido == suyo;
}

std::string limpio(std::string texto) {
    std::erase(texto, '`');
    return core::Recortar(texto);
}

}  // namespace

std::vector<Excepcion> leerCaminos(std::string_view markdown) {
    constexpr std::string_view comienzo = "<!-- caminos -->", fin = "<!-- fin -->";
    constexpr std::size_t celdas = 6;  // the four, and what stands before and behind them
    const auto desde = markdown.find(comienzo), hasta = markdown.find(fin);
    if (desde == std::string_view::npos || hasta == std::string_view::npos || hasta < desde)
        throw std::runtime_error("no está la tabla de lo que lleva cada camino");
    std::vector<Excepcion> excepciones;
    int fila = 0;
    for (const auto& linea : core::Partir(markdown.substr(desde, hasta - desde), "\n")) {
        const auto partes = core::Partir(linea, "|");
        if (partes.size() != celdas) continue;
        if (++fila <= 2) continue;  // head and ruler
        excepciones.push_back({limpio(partes[1]), limpio(partes[2]), limpio(partes[3])});
    }
    return excepciones;
}

bool exceptuado(const std::vector<Excepcion>& excepciones, std::string_view miembro,
                std::string_view coleccion, std::string_view campo) {
    return std::ranges::any_of(excepciones, [&](const Excepcion& una) {
        return coincide(una.miembro, miembro) && coincide(una.coleccion, coleccion) &&
               coincide(una.campo, campo);
    });
}

}  // namespace tarvoline::tools
