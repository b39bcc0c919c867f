// A seeded source for the demo company: the same seed gives the same company on every system (the standard
// distributions do not promise that).
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <string_view>

namespace tarvoline::tools {

class Azar {
  public:
    explicit Azar(std::uint64_t semilla) : motor_(semilla) {}

    int entre(int desde, int hasta) {
        const auto cuantos = static_cast<std::uint64_t>(hasta - desde) + 1;
        return desde + static_cast<int>(motor_() % cuantos);
    }
    bool unaDeCada(int veces) { return entre(1, veces) == 1; }
    std::string_view uno(std::span<const std::string_view> lista) {
        return lista[static_cast<std::size_t>(motor_() % lista.size())];
    }
    // Euros and cents; small amounts are commoner than large ones.
    double importe(int mayor) {
        const int techo = unaDeCada(10) ? mayor : mayor / 10;
        return entre(100, techo * 100) / 100.0;
    }
    std::string cifras(std::size_t cuantas) {
        std::string texto(cuantas, '0');
        for (auto& c : texto) {
            c = static_cast<char>('0' + entre(0, 9));
        }
        return texto;
    }
    std::uint64_t crudo() { return motor_(); }

  private:
    std::mt19937_64 motor_;
};

}  // namespace tarvoline::tools
