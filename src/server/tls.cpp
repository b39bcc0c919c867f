#include "server/tls.h"

#include <openssl/err.h>
#include <openssl/ssl.h>

#include <algorithm>
#include <array>
#include <limits>

#include "server/opciones.h"

namespace tarvoline::server {
namespace {

std::string motivo() {
    std::array<char, 256> texto{};
    ERR_error_string_n(ERR_get_error(), texto.data(), texto.size());
    ERR_clear_error();
    return texto.data();
}

int comoEntero(std::size_t cuantos) {
    return static_cast<int>(std::min<std::size_t>(cuantos, std::numeric_limits<int>::max()));
}

}  // namespace

ContextoTls::ContextoTls(const std::string& certificado, const std::string& clave)
    : contexto_(SSL_CTX_new(TLS_server_method())) {
    const auto fallar = [&](const std::string& que) {
        const std::string detalle = motivo();
        SSL_CTX_free(contexto_);
        throw ErrorServidor(que + ": " + detalle);
    };
    if (contexto_ == nullptr) fallar("TLS");
    SSL_CTX_set_min_proto_version(contexto_, TLS1_2_VERSION);
    SSL_CTX_set_mode(contexto_, SSL_MODE_AUTO_RETRY);
    SSL_CTX_set_options(contexto_, SSL_OP_NO_RENEGOTIATION);
    if (SSL_CTX_use_certificate_chain_file(contexto_, certificado.c_str()) != 1) fallar(certificado);
    if (SSL_CTX_use_PrivateKey_file(contexto_, clave.c_str(), SSL_FILETYPE_PEM) != 1) fallar(clave);
    if (SSL_CTX_check_private_key(contexto_) != 1) fallar(clave + ": no es la clave de " + certificado);
}

ContextoTls::~ContextoTls() {
    SSL_CTX_free(contexto_);
}

SesionTls::SesionTls(const ContextoTls& contexto, int conexion) : sesion_(SSL_new(contexto.get())) {
    if (sesion_ == nullptr) throw ErrorServidor("TLS: " + motivo());
    SSL_set_fd(sesion_, conexion);
}

SesionTls::~SesionTls() {
    // A closing word only over a line that works: after an error it must not be sent.
    if (sana_) SSL_shutdown(sesion_);
    SSL_free(sesion_);
    ERR_clear_error();
}

bool SesionTls::saludar() {
    ERR_clear_error();
    sana_ = SSL_accept(sesion_) == 1;
    return sana_;
}

bool SesionTls::hayPendiente() const {
    return SSL_pending(sesion_) > 0;
}

std::ptrdiff_t SesionTls::leer(char* destino, std::size_t cuantos) {
    ERR_clear_error();
    const int leidos = SSL_read(sesion_, destino, comoEntero(cuantos));
    if (leidos > 0) return leidos;
    const bool fin = SSL_get_error(sesion_, leidos) == SSL_ERROR_ZERO_RETURN;
    sana_ = sana_ && fin;
    return fin ? 0 : -1;
}

std::ptrdiff_t SesionTls::escribir(const char* origen, std::size_t cuantos) {
    ERR_clear_error();
    const int escritos = SSL_write(sesion_, origen, comoEntero(cuantos));
    sana_ = sana_ && escritos > 0;
    return escritos > 0 ? escritos : -1;
}

}  // namespace tarvoline::server
