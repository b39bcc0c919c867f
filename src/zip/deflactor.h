// Deflate of one piece of a file, such that the pieces of a file, set one behind the other, are one stream.
//
// Format: RFC 1951. A piece that is not the last ends with an empty stored block, so that the next one begins
// on a byte boundary; pieces do not look back into each other and can be made in any order on any thread.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

struct libdeflate_compressor;

namespace tarvoline::zip {

using Bytes = std::vector<std::byte>;

// Not shared between threads: each worker has its own.
class Deflactor {
  public:
    // `nivel` 1..9, as the packer is asked for.
    explicit Deflactor(int nivel);

    // The compressed piece, valid until the next call. `datos` serves as work space and is unchanged when the
    // call returns.
    std::span<const std::byte> comprimir(std::span<std::byte> datos, bool ultima);

  private:
    struct Liberar {
        void operator()(libdeflate_compressor* compresor) const;
    };
    std::size_t abrirFinal(std::size_t longitud, std::span<std::byte> datos);

    std::unique_ptr<libdeflate_compressor, Liberar> compresor_;
    Bytes salida_;
};

}  // namespace tarvoline::zip
