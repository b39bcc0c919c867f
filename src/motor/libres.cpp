#include "motor/libres.h"

#include <algorithm>
#include <bit>

namespace tarvoline::motor {

namespace {

constexpr unsigned bitsPalabra = 64;

// The bits of `palabra` where a run of `cuantas` (1 to 64) set ones begins; `detras` is the next word.
std::uint64_t comienzosDe(std::uint64_t palabra, std::uint64_t detras, unsigned cuantas) {
    for (unsigned hay = 1; hay < cuantas && palabra != 0;) {
        const unsigned paso = std::min({hay, cuantas - hay, bitsPalabra - 1});
        palabra &= (palabra >> paso) | (detras << (bitsPalabra - paso));
        detras &= detras >> paso;
        hay += paso;
    }
    return palabra;
}

}  // namespace

void Libres::poner(Huecos huecos) {
    huecos_ = std::move(huecos);
    recontar();
}

void Libres::recontar() {
    total_ = 0;
    mayor_ = 0;
    for (const std::uint64_t palabra : huecos_.mapa)
        total_ += static_cast<unsigned>(std::popcount(palabra));
    for (const Tramo& tramo : huecos_.tramos) {
        total_ += tramo.cuantas;
        mayor_ = std::max(mayor_, tramo.cuantas);
    }
}

std::vector<Tramo> Libres::tramos() const {
    std::vector<Tramo> todos;
    const auto poner = [&](const Tramo& tramo) {
        const bool seguido = !todos.empty() && todos.back().pagina + todos.back().cuantas == tramo.pagina;
        if (seguido) {
            todos.back().cuantas += tramo.cuantas;
        } else {
            todos.push_back(tramo);
        }
    };
    for (std::size_t i = 0; i < huecos_.mapa.size(); ++i) {
        for (std::uint64_t palabra = huecos_.mapa[i]; palabra != 0; palabra &= palabra - 1) {
            const auto bit = static_cast<std::size_t>(std::countr_zero(palabra));
            poner({static_cast<std::uint32_t>(primeraPagina + i * bitsPalabra + bit), 1});
        }
    }
    for (const Tramo& tramo : huecos_.tramos)
        poner(tramo);
    return todos;
}

std::uint32_t Libres::tomarSeguidas(std::uint32_t cuantas, Para para) {
    if (cuantas == 0 || cuantas > total_) return 0;
    std::uint32_t primera = para == Para::hojas ? tomarDeTramos(cuantas) : tomarDelMapa(cuantas, para);
    if (primera == 0) primera = para == Para::hojas ? tomarDelMapa(cuantas, para) : tomarDeTramos(cuantas);
    if (primera != 0) total_ -= cuantas;
    return primera;
}

std::uint32_t Libres::tomarDelMapa(std::uint32_t cuantas, Para para) {
    constexpr std::size_t parteInterior = 8;
    const std::size_t palabras = huecos_.mapa.size();
    if (cuantas > bitsPalabra) return 0;
    if (para == Para::interiores) return tomarEntre(0, palabras, cuantas);
    const std::size_t desde = palabras / parteInterior;
    const std::size_t mano = std::clamp(mano_, desde, palabras);
    std::uint32_t primera = tomarEntre(mano, palabras, cuantas);
    if (primera == 0) primera = tomarEntre(desde, mano, cuantas);
    if (primera != 0) mano_ = (primera - primeraPagina) / bitsPalabra;
    return primera;
}

// A run that begins in these words of the map, the first there is.
std::uint32_t Libres::tomarEntre(std::size_t desde, std::size_t hasta, unsigned cuantas) {
    auto& mapa = huecos_.mapa;
    for (std::size_t i = desde; i < hasta; ++i) {
        if (mapa[i] == 0) continue;
        const std::uint64_t detras = i + 1 < mapa.size() ? mapa[i + 1] : 0;
        const std::uint64_t comienzos = comienzosDe(mapa[i], detras, cuantas);
        if (comienzos == 0) continue;
        const auto bit = static_cast<unsigned>(std::countr_zero(comienzos));
        const std::uint64_t tomadas = ~std::uint64_t{0} >> (bitsPalabra - cuantas);
        mapa[i] &= ~(tomadas << bit);
        if (bit + cuantas > bitsPalabra) mapa[i + 1] &= ~(tomadas >> (bitsPalabra - bit));
        return static_cast<std::uint32_t>(primeraPagina + i * bitsPalabra + bit);
    }
    return 0;
}

// The smallest run that serves, from its beginning.
std::uint32_t Libres::tomarDeTramos(std::uint32_t cuantas) {
    if (cuantas > mayor_) return 0;
    auto& tramos = huecos_.tramos;
    auto mejor = tramos.end();
    std::uint32_t mayor = 0;
    for (auto tramo = tramos.begin(); tramo != tramos.end(); ++tramo) {
        if (tramo->cuantas == cuantas) {  // none serves better, and the longest is still no longer than known
            mejor = tramo;
            mayor = mayor_;
            break;
        }
        mayor = std::max(mayor, tramo->cuantas);
        if (tramo->cuantas < cuantas) continue;
        if (mejor == tramos.end() || tramo->cuantas < mejor->cuantas) mejor = tramo;
    }
    mayor_ = mayor;
    if (mejor == tramos.end()) return 0;
    const std::uint32_t primera = mejor->pagina;
    mejor->pagina += cuantas;
    mejor->cuantas -= cuantas;
    if (mejor->cuantas == 0) tramos.erase(mejor);
    return primera;
}

void Libres::tomarSueltas(std::uint32_t cuantas, Para para, std::vector<std::uint32_t>& paginas) {
    for (std::uint32_t seguidas = cuantas; cuantas > 0 && seguidas > 0;) {
        seguidas = std::min(seguidas, cuantas);
        const std::uint32_t primera = tomarSeguidas(seguidas, para);
        if (primera == 0) {
            // The last leaves of all may lie among the inner pages.
            if (--seguidas == 0 && para == Para::hojas) {
                para = Para::interiores;
                seguidas = 1;
            }
            continue;
        }
        for (std::uint32_t i = 0; i < seguidas; ++i)
            paginas.push_back(primera + i);
        cuantas -= seguidas;
    }
}

void Libres::devolver(const std::vector<Tramo>& vuelven) {
    constexpr std::uint32_t fin = primeraPagina + paginasDelMapa;
    for (const Tramo& vuelve : vuelven) {
        total_ += vuelve.cuantas;
        const std::uint32_t hasta = vuelve.pagina + vuelve.cuantas;
        if (vuelve.pagina < fin) devolverAlMapa(vuelve.pagina, std::min(hasta, fin));
        const std::uint32_t desde = std::max(vuelve.pagina, fin);
        if (desde < hasta) devolverATramos({desde, hasta - desde});
    }
}

void Libres::devolverAlMapa(std::uint32_t desde, std::uint32_t hasta) {
    auto& mapa = huecos_.mapa;
    const std::size_t palabras = (hasta - primeraPagina + bitsPalabra - 1) / bitsPalabra;
    if (mapa.size() < palabras) mapa.resize(palabras);
    for (std::uint32_t bit = desde - primeraPagina; bit < hasta - primeraPagina; ++bit)
        mapa[bit / bitsPalabra] |= std::uint64_t{1} << (bit % bitsPalabra);
}

void Libres::devolverATramos(const Tramo& vuelve) {
    auto& tramos = huecos_.tramos;
    auto detras = std::ranges::lower_bound(tramos, vuelve.pagina, {}, &Tramo::pagina);
    const bool tocaDetras = detras != tramos.end() && vuelve.pagina + vuelve.cuantas == detras->pagina;
    const bool tocaDelante =
        detras != tramos.begin() && (detras - 1)->pagina + (detras - 1)->cuantas == vuelve.pagina;
    if (tocaDelante) {
        const auto delante = detras - 1;
        delante->cuantas += vuelve.cuantas + (tocaDetras ? detras->cuantas : 0);
        mayor_ = std::max(mayor_, delante->cuantas);
        if (tocaDetras) tramos.erase(detras);
    } else if (tocaDetras) {
        *detras = {vuelve.pagina, vuelve.cuantas + detras->cuantas};
        mayor_ = std::max(mayor_, detras->cuantas);
    } else {
        tramos.insert(detras, vuelve);
        mayor_ = std::max(mayor_, vuelve.cuantas);
    }
}

std::vector<Tramo> Libres::apartar(std::size_t cuantos) {
    auto& tramos = huecos_.tramos;
    cuantos = std::min(cuantos, tramos.size());
    const auto corte = tramos.begin() + static_cast<std::ptrdiff_t>(cuantos);
    std::nth_element(tramos.begin(), corte, tramos.end(),
                     [](const Tramo& a, const Tramo& b) { return a.cuantas < b.cuantas; });
    std::vector<Tramo> apartados(tramos.begin(), corte);
    tramos.erase(tramos.begin(), corte);
    std::sort(tramos.begin(), tramos.end(),
              [](const Tramo& a, const Tramo& b) { return a.pagina < b.pagina; });
    recontar();
    return apartados;
}

}  // namespace tarvoline::motor
