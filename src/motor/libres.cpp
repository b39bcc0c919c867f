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
        if (tramo->cuantas == cuantas) {  // none serves better, and the longest is still no longer than known
            mejor = tramo;
            mayor = mayor_;
            break;
        }
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

void Libres::devolver(const std::vector<Tramo>& vuelven) {
    for (const Tramo& vuelve : vuelven) {
        total_ += vuelve.cuantas;
        auto detras = std::ranges::lower_bound(tramos_, vuelve.pagina, {}, &Tramo::pagina);
        const bool tocaDetras = detras != tramos_.end() && vuelve.pagina + vuelve.cuantas == detras->pagina;
        const bool tocaDelante =
            detras != tramos_.begin() && (detras - 1)->pagina + (detras - 1)->cuantas == vuelve.pagina;
        if (tocaDelante) {
            const auto delante = detras - 1;
            delante->cuantas += vuelve.cuantas + (tocaDetras ? detras->cuantas : 0);
            mayor_ = std::max(mayor_, delante->cuantas);
            if (tocaDetras) tramos_.erase(detras);
        } else if (tocaDetras) {
            *detras = {vuelve.pagina, vuelve.cuantas + detras->cuantas};
            mayor_ = std::max(mayor_, detras->cuantas);
        } else {
            tramos_.insert(detras, vuelve);
            mayor_ = std::max(mayor_, vuelve.cuantas);
        }
    }
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
