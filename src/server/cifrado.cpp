#include "server/cifrado.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

#include <algorithm>
#include <memory>
#include <span>
#include <vector>

#include "server/opciones.h"

namespace tarvoline::server {
namespace {

constexpr std::size_t longitudNonce = 12;
constexpr std::size_t longitudSello = 16;
constexpr std::string_view alfabeto = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

struct CierreContexto {
    void operator()(EVP_CIPHER_CTX* contexto) const { EVP_CIPHER_CTX_free(contexto); }
};
using Contexto = std::unique_ptr<EVP_CIPHER_CTX, CierreContexto>;

void exigir(int resultado, const char* que) {
    if (resultado != 1) throw ErrorServidor(que);
}

void azar(std::span<unsigned char> destino) {
    exigir(RAND_bytes(destino.data(), static_cast<int>(destino.size())), "no hay fuente de azar");
}

const unsigned char* octetos(std::string_view texto) {
    return reinterpret_cast<const unsigned char*>(texto.data());
}

}  // namespace

std::string textoAleatorio(std::size_t longitud) {
    // 248 is the largest multiple of 62 that a byte holds: bytes above it would favour the first characters.
    constexpr unsigned limite = 256 - 256 % alfabeto.size();
    std::string texto;
    std::vector<unsigned char> fuente(longitud * 2);
    while (texto.size() < longitud) {
        azar(fuente);
        for (const unsigned octeto : fuente) {
            if (octeto < limite && texto.size() < longitud) texto += alfabeto[octeto % alfabeto.size()];
        }
    }
    return texto;
}

bool igualesSinPista(std::string_view dado, std::string_view secreto) {
    // Compared against itself when the lengths differ, so that the work is the same.
    const bool mismaLongitud = dado.size() == secreto.size();
    const std::string_view otro = mismaLongitud ? secreto : dado;
    return (CRYPTO_memcmp(dado.data(), otro.data(), dado.size()) == 0) && mismaLongitud;
}

Cifrado::Cifrado(platform::SistemaArchivos& archivos, const std::string& rutaClave) {
    if (!platform::existe(archivos, rutaClave)) {
        azar(clave_);
        platform::escribirAtomico(archivos, rutaClave,
                                  {reinterpret_cast<const char*>(clave_.data()), clave_.size()}, 0600);
        return;
    }
    const std::string guardada = platform::leerTodo(archivos, rutaClave);
    if (guardada.size() != clave_.size()) throw ErrorServidor(rutaClave + ": no contiene una clave");
    std::ranges::copy(guardada, clave_.begin());
}

Cifrado::~Cifrado() {
    OPENSSL_cleanse(clave_.data(), clave_.size());
}

std::string Cifrado::sellar(std::string_view claro, std::string_view contexto) const {
    std::string sellado(longitudNonce + longitudSello + claro.size(), '\0');
    auto* const destino = reinterpret_cast<unsigned char*>(sellado.data());
    azar({destino, longitudNonce});

    const Contexto cifra(EVP_CIPHER_CTX_new());
    constexpr const char* fallo = "no se puede cifrar";
    int escritos = 0;
    exigir(EVP_EncryptInit_ex(cifra.get(), EVP_aes_256_gcm(), nullptr, clave_.data(), destino), fallo);
    exigir(EVP_EncryptUpdate(cifra.get(), nullptr, &escritos, octetos(contexto),
                             static_cast<int>(contexto.size())),
           fallo);
    exigir(EVP_EncryptUpdate(cifra.get(), destino + longitudNonce + longitudSello, &escritos, octetos(claro),
                             static_cast<int>(claro.size())),
           fallo);
    std::array<unsigned char, longitudSello> resto{};
    exigir(EVP_EncryptFinal_ex(cifra.get(), resto.data(), &escritos), fallo);
    exigir(EVP_CIPHER_CTX_ctrl(cifra.get(), EVP_CTRL_GCM_GET_TAG, longitudSello, destino + longitudNonce),
           fallo);
    return sellado;
}

std::string Cifrado::abrir(std::string_view sellado, std::string_view contexto) const {
    constexpr const char* fallo =
        "una clave guardada no se puede leer: ¿se ha cambiado el archivo de la clave de cifrado?";
    if (sellado.size() < longitudNonce + longitudSello) throw ErrorServidor(fallo);
    std::string sello(sellado.substr(longitudNonce, longitudSello));
    const std::string_view cuerpo = sellado.substr(longitudNonce + longitudSello);
    std::string claro(cuerpo.size(), '\0');

    const Contexto cifra(EVP_CIPHER_CTX_new());
    int escritos = 0;
    exigir(EVP_DecryptInit_ex(cifra.get(), EVP_aes_256_gcm(), nullptr, clave_.data(), octetos(sellado)),
           fallo);
    exigir(EVP_DecryptUpdate(cifra.get(), nullptr, &escritos, octetos(contexto),
                             static_cast<int>(contexto.size())),
           fallo);
    exigir(EVP_DecryptUpdate(cifra.get(), reinterpret_cast<unsigned char*>(claro.data()), &escritos,
                             octetos(cuerpo), static_cast<int>(cuerpo.size())),
           fallo);
    exigir(EVP_CIPHER_CTX_ctrl(cifra.get(), EVP_CTRL_GCM_SET_TAG, longitudSello, sello.data()), fallo);
    std::array<unsigned char, longitudSello> resto{};
    exigir(EVP_DecryptFinal_ex(cifra.get(), resto.data(), &escritos), fallo);
    return claro;
}

}  // namespace tarvoline::server
