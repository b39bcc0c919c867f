// The free pages that a head lists, as runs in order of place. A commit takes from here and gives back what
// it leaves behind; what does not fit in the head any more goes to a list of pages (Escritura does that).
#pragma once

#include <cstdint>
#include <vector>

#include "motor/cabecera.h"

namespace tarvoline::motor {

class Libres {
  public:
    void poner(std::vector<Tramo> tramos);
    const std::vector<Tramo>& tramos() const { return tramos_; }
    std::uint64_t total() const { return total_; }

    // Takes `cuantas` pages that follow each other; 0 when there is no such run. The smallest run that serves
    // is taken, from its beginning.
    std::uint32_t tomarSeguidas(std::uint32_t cuantas);
    // Takes up to `cuantas` pages, from the longest runs first, and appends them to `paginas`.
    void tomarSueltas(std::uint32_t cuantas, std::vector<std::uint32_t>& paginas);
    // Runs that touch become one.
    void devolver(const std::vector<Tramo>& vuelven);
    // Takes the `cuantos` shortest runs out: what is least missed.
    std::vector<Tramo> apartar(std::size_t cuantos);

  private:
    void recontar();

    std::vector<Tramo> tramos_;
    std::uint64_t total_ = 0;
    // No run is longer than this, so most searches for a long one end before they begin.
    std::uint32_t mayor_ = 0;
};

}  // namespace tarvoline::motor
