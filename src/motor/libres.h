// The free pages that a head lists: a map of the file's first pages, a bit each, and runs of those behind in
// order of place. A commit takes from here and gives back what it leaves behind; runs that do not fit in the
// head any more go to a list of pages (Escritura does that).
//
// Pages that follow each other make one write. Inner pages are few and rewritten by nearly every commit,
// leaves are many and live long: kept apart, both find runs. The inner ones have the first eighth of the
// file, which is nearly empty so; leaves are taken from what lies behind, in turn around the file, so that a
// place has had its time to grow free.
#pragma once

#include <cstdint>
#include <vector>

#include "motor/cabecera.h"

namespace tarvoline::motor {

enum class Para { hojas, interiores };

class Libres {
  public:
    void poner(Huecos huecos);
    const Huecos& huecos() const { return huecos_; }
    std::uint64_t total() const { return total_; }
    // All of them as runs, in order of place.
    std::vector<Tramo> tramos() const;

    // Takes `cuantas` pages that follow each other; 0 when there is no such run.
    std::uint32_t tomarSeguidas(std::uint32_t cuantas, Para para);
    // Takes up to `cuantas` pages in runs as long as there are, and appends them to `paginas`.
    void tomarSueltas(std::uint32_t cuantas, Para para, std::vector<std::uint32_t>& paginas);
    // Runs that touch become one.
    void devolver(const std::vector<Tramo>& vuelven);
    // Takes the `cuantos` shortest runs behind the map out: what is least missed.
    std::vector<Tramo> apartar(std::size_t cuantos);

  private:
    void recontar();
    std::uint32_t tomarDelMapa(std::uint32_t cuantas, Para para);
    std::uint32_t tomarEntre(std::size_t desde, std::size_t hasta, unsigned cuantas);
    std::uint32_t tomarDeTramos(std::uint32_t cuantas);
    void devolverAlMapa(std::uint32_t desde, std::uint32_t hasta);
    void devolverATramos(const Tramo& vuelve);

    Huecos huecos_;
    std::uint64_t total_ = 0;
    // No run behind the map is longer than this, so most searches for a long one end before they begin.
    std::uint32_t mayor_ = 0;
    // The word of the map where the last leaves were found.
    std::size_t mano_ = 0;
};

}  // namespace tarvoline::motor
