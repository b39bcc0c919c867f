// What the service keeps secret: passwords at rest, and random texts that nobody can foresee.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/archivos.h"

namespace tarvoline::server {

// `longitud` characters of 0-9, A-Z, a-z from the system's cryptographic source, each equally likely.
std::string textoAleatorio(std::size_t longitud);
// Equal or not, in a time that depends on the length of `dado` alone.
bool igualesSinPista(std::string_view dado, std::string_view secreto);

// AES-256-GCM under a key that lies in a file beside the store. A sealed text is nonce (12 bytes), tag (16),
// ciphertext.
class Cifrado {
  public:
    // Reads the key, or makes it at the first start (readable by its owner only). Throws ErrorServidor when
    // there is a file that holds no key, and platform::ErrorArchivo.
    Cifrado(platform::SistemaArchivos& archivos, const std::string& rutaClave);
    ~Cifrado();
    Cifrado(const Cifrado&) = delete;
    Cifrado& operator=(const Cifrado&) = delete;

    // `contexto` is bound to the sealed text: it opens only under the same one, so that one user's sealed
    // password cannot be put in another's place.
    std::string sellar(std::string_view claro, std::string_view contexto) const;
    // Throws ErrorServidor when the text was sealed with another key, under another context, or was changed.
    std::string abrir(std::string_view sellado, std::string_view contexto) const;

  private:
    std::array<unsigned char, 32> clave_{};
};

}  // namespace tarvoline::server
