// Private copies of pages that passed their checks, found by page number. A copy is never a mapping of the
// file: what stands here cannot change under a reader.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "motor/pagina.h"

namespace tarvoline::motor {

class CachePaginas {
  public:
    // Keeps up to `tope` pages when recortar() is called; a command may go above it.
    explicit CachePaginas(std::size_t tope) : tope_(tope) {}

    // The copy of that page as that commit wrote it; null when there is none. Valid until recortar() or
    // vaciar(), or until the page's number is prepared anew.
    Pagina* buscar(std::uint32_t numero, Sello sello);
    // The seal of the copy of that page; 0 when there is none.
    Sello selloDe(std::uint32_t numero) const;
    // Room for that page's bytes, in place of any older copy; the caller fills it. It is found under `sello`.
    Pagina& preparar(std::uint32_t numero, Sello sello);
    void olvidar(std::uint32_t numero);
    void vaciar();
    // Called between commands: gives up what has not been asked for lately.
    void recortar();

  private:
    struct Ranura {
        std::uint32_t numero = 0;  // 0: free
        bool usada = false;        // asked for since the hand came by
        Sello sello = 0;
        std::unique_ptr<Pagina> copia;
    };

    std::size_t casillaDe(std::uint32_t numero) const;
    void crecer();
    void quitar(std::size_t casilla);

    // Open addressing; the length is a power of two.
    std::vector<Ranura> ranuras_;
    std::size_t cuantas_ = 0;
    std::size_t mano_ = 0;
    std::size_t tope_;
};

}  // namespace tarvoline::motor
