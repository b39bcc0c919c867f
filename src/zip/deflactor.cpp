#include "zip/deflactor.h"

#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>
#include <stdexcept>

namespace tarvoline::zip {
namespace {

// Room for the empty stored block that ends a piece: its three header bits may need a byte of their own.
constexpr std::size_t cierre = 5;

Bytef* comoZlib(std::byte* datos) {
    return reinterpret_cast<Bytef*>(datos);
}

// Where the last block of a finished stream begins and ends, in bits.
struct UltimoBloque {
    std::uint64_t inicio = 0;
    std::uint64_t fin = 0;
};

class Recorrido {
  public:
    Recorrido() {
        if (inflateInit2(&estado_, -MAX_WBITS) != Z_OK) throw std::bad_alloc();
    }
    ~Recorrido() { inflateEnd(&estado_); }
    Recorrido(const Recorrido&) = delete;
    Recorrido& operator=(const Recorrido&) = delete;

    // Block borders are not on byte borders and a block does not tell its length, so the stream is walked.
    // It unpacks onto the very bytes that it was made from.
    UltimoBloque buscar(std::span<std::byte> flujo, std::span<std::byte> datos) {
        estado_.next_in = comoZlib(flujo.data());
        estado_.avail_in = static_cast<uInt>(flujo.size());
        estado_.next_out = comoZlib(datos.data());
        estado_.avail_out = static_cast<uInt>(datos.size());
        constexpr int enFrontera = 128;
        constexpr int enElUltimo = 64;
        UltimoBloque bloque;
        while (true) {
            if (inflate(&estado_, Z_BLOCK) != Z_OK || (estado_.data_type & enFrontera) == 0) {
                throw std::logic_error("un trozo comprimido no se vuelve a leer igual");
            }
            const std::uint64_t leidos = flujo.size() - estado_.avail_in;
            const std::uint64_t bit = leidos * 8 - static_cast<std::uint64_t>(estado_.data_type & 7);
            if ((estado_.data_type & enElUltimo) != 0) {
                bloque.fin = bit;
                return bloque;
            }
            bloque.inicio = bit;
        }
    }

  private:
    z_stream estado_{};
};

}  // namespace

void Deflactor::Liberar::operator()(libdeflate_compressor* compresor) const {
    libdeflate_free_compressor(compresor);
}

Deflactor::Deflactor(int nivel) : compresor_(libdeflate_alloc_compressor(std::clamp(nivel, 1, 9))) {
    if (compresor_ == nullptr) throw std::bad_alloc();
}

std::span<const std::byte> Deflactor::comprimir(std::span<std::byte> datos, bool ultima) {
    const std::size_t cota = libdeflate_deflate_compress_bound(compresor_.get(), datos.size());
    if (salida_.size() < cota + cierre) salida_.resize(cota + cierre);
    std::size_t longitud =
        libdeflate_deflate_compress(compresor_.get(), datos.data(), datos.size(), salida_.data(), cota);
    if (longitud == 0) throw std::logic_error("un trozo ha pasado del límite del propio compresor");
    if (!ultima) longitud = abrirFinal(longitud, datos);
    return std::span(salida_).first(longitud);
}

// Takes the end mark off the last block and appends an empty stored block. Returns the new length.
std::size_t Deflactor::abrirFinal(std::size_t longitud, std::span<std::byte> datos) {
    Recorrido recorrido;
    const UltimoBloque bloque = recorrido.buscar(std::span(salida_).first(longitud), datos);
    const auto marca = static_cast<std::byte>(1U << (bloque.inicio % 8));
    salida_[bloque.inicio / 8] &= ~marca;

    auto usados = static_cast<std::size_t>(bloque.fin / 8);
    const auto bits = static_cast<unsigned>(bloque.fin % 8);
    if (bits != 0) {
        salida_[usados] &= static_cast<std::byte>((1U << bits) - 1);
        ++usados;
    }
    const unsigned libres = bits == 0 ? 0 : 8 - bits;
    if (libres < 3) salida_[usados++] = std::byte{0};
    constexpr std::array vacio{std::byte{0}, std::byte{0}, std::byte{0xFF}, std::byte{0xFF}};
    std::copy(vacio.begin(), vacio.end(), salida_.begin() + static_cast<std::ptrdiff_t>(usados));
    return usados + vacio.size();
}

}  // namespace tarvoline::zip
