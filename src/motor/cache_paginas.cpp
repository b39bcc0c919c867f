#include "motor/cache_paginas.h"

#include <utility>

namespace tarvoline::motor {

namespace {

std::size_t dispersar(std::uint32_t numero) {
    return static_cast<std::size_t>((std::uint64_t{numero} * 0x9E3779B97F4A7C15U) >> 32U);
}

}  // namespace

// Where the page stands, or the free place where it would; the table is never full.
std::size_t CachePaginas::casillaDe(std::uint32_t numero) const {
    const std::size_t mascara = ranuras_.size() - 1;
    std::size_t casilla = dispersar(numero) & mascara;
    while (ranuras_[casilla].numero != 0 && ranuras_[casilla].numero != numero)
        casilla = (casilla + 1) & mascara;
    return casilla;
}

Pagina* CachePaginas::buscar(std::uint32_t numero, Sello sello) {
    if (cuantas_ == 0) return nullptr;
    Ranura& ranura = ranuras_[casillaDe(numero)];
    if (ranura.numero != numero || ranura.sello != sello) return nullptr;
    ranura.usada = true;
    return ranura.copia.get();
}

Sello CachePaginas::selloDe(std::uint32_t numero) const {
    return cuantas_ == 0 ? 0 : ranuras_[casillaDe(numero)].sello;
}

Pagina& CachePaginas::preparar(std::uint32_t numero, Sello sello) {
    if (2 * (cuantas_ + 1) > ranuras_.size()) crecer();
    Ranura& ranura = ranuras_[casillaDe(numero)];
    if (ranura.numero == 0) {
        ranura.numero = numero;
        ranura.copia = std::make_unique<Pagina>();
        ++cuantas_;
    }
    ranura.usada = true;
    ranura.sello = sello;
    return *ranura.copia;
}

void CachePaginas::olvidar(std::uint32_t numero) {
    if (cuantas_ == 0) return;
    const std::size_t casilla = casillaDe(numero);
    if (ranuras_[casilla].numero == numero) quitar(casilla);
}

void CachePaginas::vaciar() {
    ranuras_.clear();
    cuantas_ = 0;
    mano_ = 0;
}

void CachePaginas::recortar() {
    while (cuantas_ > tope_) {
        mano_ = (mano_ + 1) & (ranuras_.size() - 1);
        Ranura& ranura = ranuras_[mano_];
        if (ranura.numero == 0) continue;
        if (std::exchange(ranura.usada, false)) continue;
        quitar(mano_);
    }
}

void CachePaginas::crecer() {
    std::vector<Ranura> antes(ranuras_.empty() ? 64 : 2 * ranuras_.size());
    antes.swap(ranuras_);
    mano_ = 0;
    for (Ranura& ranura : antes) {
        if (ranura.numero != 0) ranuras_[casillaDe(ranura.numero)] = std::move(ranura);
    }
}

// Those behind in the same run move up, so that a search never stops too early.
void CachePaginas::quitar(std::size_t casilla) {
    const std::size_t mascara = ranuras_.size() - 1;
    ranuras_[casilla] = {};
    --cuantas_;
    for (std::size_t otra = (casilla + 1) & mascara; ranuras_[otra].numero != 0;
         otra = (otra + 1) & mascara) {
        Ranura movida = std::move(ranuras_[otra]);
        ranuras_[otra] = {};
        ranuras_[casillaDe(movida.numero)] = std::move(movida);
    }
}

}  // namespace tarvoline::motor
