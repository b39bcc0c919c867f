#include "motor/libres.h"

#include <algorithm>

namespace tarvoline::motor {

void Libres::poner(std::vector<Tramo> tramos) {
    tramos_ = std::move(tramos);
    recontar();
}

void Libres::recontar() {
    total_ = 0;
    mayor_ = 0;
    for (const Tramo& tramo : tramos_) {
        total_ += tramo.cuantas;
        mayor_ = std::max(mayor_, tramo.cuantas);
    }
}

std::uint32_t Libres::tomarSeguidas(std::uint32_t cuantas) {
    if (cuantas == 0 || cuantas > mayor_) return 0;
    auto mejor = tramos_.end();
    std::uint32_t mayor = 0;
    for (auto tramo = tramos_.begin(); tramo != tramos_.end(); ++tramo) {
        mayor = std::max(mayor, tramo->cuantas);
        if (tramo->cuantas < cuantas) continue;
        if (mejor == tramos_.end() || tramo->cuantas < mejor->cuantas) mejor = tramo;
    }
    mayor_ = mayor;
    if (mejor == tramos_.end()) return 0;
    const std::uint32_t primera = mejor->pagina;
    mejor->pagina += cuantas;
    mejor->cuantas -= cuantas;
    if (mejor->cuantas == 0) tramos_.erase(mejor);
    total_ -= cuantas;
    return primera;
}

void Libres::tomarSueltas(std::uint32_t cuantas, std::vector<std::uint32_t>& paginas) {
    while (cuantas > 0 && total_ > 0) {
        const auto tramo =
            std::max_element(tramos_.begin(), tramos_.end(),
                             [](const Tramo& a, const Tramo& b) { return a.cuantas < b.cuantas; });
        mayor_ = tramo->cuantas;
        const std::uint32_t toma = std::min(cuantas, tramo->cuantas);
        const std::uint32_t primera = tomarSeguidas(toma);
        for (std::uint32_t i = 0; i < toma; ++i)
            paginas.push_back(primera + i);
        cuantas -= toma;
    }
}

void Libres::devolver(std::vector<Tramo>& vuelven) {
    const auto antes = [](const Tramo& a, const Tramo& b) { return a.pagina < b.pagina; };
    std::sort(vuelven.begin(), vuelven.end(), antes);
    std::vector<Tramo> juntos;
    juntos.reserve(tramos_.size() + vuelven.size());
    const auto anadir = [&](const Tramo& tramo) {
        if (!juntos.empty() && juntos.back().pagina + juntos.back().cuantas == tramo.pagina) {
            juntos.back().cuantas += tramo.cuantas;
        } else {
            juntos.push_back(tramo);
        }
        mayor_ = std::max(mayor_, juntos.back().cuantas);
    };
    auto tramo = tramos_.begin();
    for (const Tramo& vuelve : vuelven) {
        for (; tramo != tramos_.end() && antes(*tramo, vuelve); ++tramo)
            anadir(*tramo);
        anadir(vuelve);
        total_ += vuelve.cuantas;
    }
    for (; tramo != tramos_.end(); ++tramo)
        anadir(*tramo);
    tramos_.swap(juntos);
}

std::vector<Tramo> Libres::apartar(std::size_t cuantos) {
    cuantos = std::min(cuantos, tramos_.size());
    const auto corte = tramos_.begin() + static_cast<std::ptrdiff_t>(cuantos);
    std::nth_element(tramos_.begin(), corte, tramos_.end(),
                     [](const Tramo& a, const Tramo& b) { return a.cuantas < b.cuantas; });
    std::vector<Tramo> apartados(tramos_.begin(), corte);
    tramos_.erase(tramos_.begin(), corte);
    std::sort(tramos_.begin(), tramos_.end(),
              [](const Tramo& a, const Tramo& b) { return a.pagina < b.pagina; });
    recontar();
    return apartados;
}

}  // namespace tarvoline::motor
