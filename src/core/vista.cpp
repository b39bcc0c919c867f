#include "core/vista.h"

#include <algorithm>
#include <numeric>

#include "core/texto.h"

namespace tarvoline::core {
namespace {

// The order of the data rows by `clave`, equal ones as they stood.
template <typename Clave>
std::vector<std::size_t> ordenDe(const std::vector<Clave>& claves, bool ascendente) {
    std::vector<std::size_t> orden(claves.size());
    std::iota(orden.begin(), orden.end(), std::size_t{0});
    std::stable_sort(orden.begin(), orden.end(), [&](std::size_t a, std::size_t b) {
        return ascendente ? claves[a] < claves[b] : claves[b] < claves[a];
    });
    return orden;
}

}  // namespace

void Rejilla::ponerFilas(int cuantas) {
    filas_.resize(static_cast<std::size_t>(std::max(cuantas, 0)));
}

void Rejilla::vaciar() {
    filas_.clear();
    columnaOrden_ = -1;
    Row = 0;
    RowSel = 0;
}

bool Rejilla::dentro(int fila, int columna) const {
    return fila >= 0 && fila < filas() && columna >= 0 && columna < columnas;
}

const std::string& Rejilla::celda(int fila, int columna) const {
    static const std::string nada;
    return dentro(fila, columna) ? filas_[static_cast<std::size_t>(fila)][static_cast<std::size_t>(columna)]
                                 : nada;
}

void Rejilla::ponerCelda(int fila, int columna, std::string texto) {
    if (dentro(fila, columna)) {
        if (columna == columnaOrden_) {
            columnaOrden_ = -1;
        }
        filas_[static_cast<std::size_t>(fila)][static_cast<std::size_t>(columna)] = std::move(texto);
    }
}

void Rejilla::quitarFila(int fila) {
    if (fila >= 1 && fila < filas()) {
        filas_.erase(filas_.begin() + fila);
    }
}

void Rejilla::ordenar(int columna, bool ascendente, bool comoNumero) {
    if (columna < 0 || columna >= columnas) {
        return;
    }
    columnaOrden_ = columna;
    ordenAscendente_ = ascendente;
    if (filas() < 3) {
        return;
    }
    const auto indice = static_cast<std::size_t>(columna);
    std::vector<std::size_t> orden;
    if (comoNumero) {
        std::vector<double> claves;
        std::transform(filas_.begin() + 1, filas_.end(), std::back_inserter(claves),
                       [&](const Fila& fila) { return Val(fila[indice]); });
        orden = ordenDe(claves, ascendente);
    } else {
        // Bytes of UTF-8 compare as their code points do.
        std::vector<std::string_view> claves;
        std::transform(filas_.begin() + 1, filas_.end(), std::back_inserter(claves),
                       [&](const Fila& fila) { return std::string_view(fila[indice]); });
        orden = ordenDe(claves, ascendente);
    }
    std::vector<Fila> ordenadas;
    ordenadas.reserve(filas_.size());
    ordenadas.push_back(std::move(filas_.front()));
    for (const std::size_t lugar : orden) {
        ordenadas.push_back(std::move(filas_[lugar + 1]));
    }
    filas_ = std::move(ordenadas);
    seguirEleccion(orden);
}

// `orden`: which data row, from 0, stands at each place now.
void Rejilla::seguirEleccion(const std::vector<std::size_t>& orden) {
    const auto lugar = Row == RowSel && Row > 0
                           ? std::find(orden.begin(), orden.end(), static_cast<std::size_t>(Row - 1))
                           : orden.end();
    Row = RowSel = lugar == orden.end() ? 0 : static_cast<int>(lugar - orden.begin()) + 1;
}

}  // namespace tarvoline::core
