#include "data/huella.h"

#include <openssl/evp.h>

#include <array>
#include <stdexcept>

namespace tarvoline::data {

namespace {

struct Cierre {
    void operator()(EVP_MD_CTX* contexto) const { EVP_MD_CTX_free(contexto); }
};

void exigir(int resultado) {
    if (resultado != 1) throw std::runtime_error("la biblioteca criptográfica no tiene SHA-256");
}

}  // namespace

struct Huella::Interior {
    std::unique_ptr<EVP_MD_CTX, Cierre> contexto{EVP_MD_CTX_new()};
};

Huella::Huella() : interior_(std::make_unique<Interior>()) {
    exigir(EVP_DigestInit_ex(interior_->contexto.get(), EVP_sha256(), nullptr));
}

Huella::~Huella() = default;

void Huella::anadir(std::string_view bytes) {
    exigir(EVP_DigestUpdate(interior_->contexto.get(), bytes.data(), bytes.size()));
}

std::string Huella::enHexadecimal() {
    constexpr std::string_view cifras = "0123456789abcdef";
    std::array<unsigned char, EVP_MAX_MD_SIZE> suma{};
    unsigned bytes = 0;
    exigir(EVP_DigestFinal_ex(interior_->contexto.get(), suma.data(), &bytes));
    std::string texto;
    for (unsigned i = 0; i < bytes; ++i) {
        texto += cifras[suma[i] >> 4U];
        texto += cifras[suma[i] & 15U];
    }
    return texto;
}

}  // namespace tarvoline::data
