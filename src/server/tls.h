// TLS of the service's own connections: one context a service, one session a connection.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

struct ssl_ctx_st;
struct ssl_st;

namespace tarvoline::server {

// A certificate chain and its key (PEM), TLS 1.2 or newer.
class ContextoTls {
  public:
    // Throws ErrorServidor when a file cannot be read or the two do not belong together.
    ContextoTls(const std::string& certificado, const std::string& clave);
    ~ContextoTls();
    ContextoTls(const ContextoTls&) = delete;
    ContextoTls& operator=(const ContextoTls&) = delete;

    ssl_ctx_st* get() const { return contexto_; }

  private:
    ssl_ctx_st* contexto_;
};

// The server's end over a connected socket, which it does not own.
class SesionTls {
  public:
    SesionTls(const ContextoTls& contexto, int conexion);
    ~SesionTls();
    SesionTls(const SesionTls&) = delete;
    SesionTls& operator=(const SesionTls&) = delete;

    bool saludar();             // the handshake; false when it fails or takes longer than the socket waits
    bool hayPendiente() const;  // decrypted bytes wait to be read
    std::ptrdiff_t leer(char* destino, std::size_t cuantos);
    std::ptrdiff_t escribir(const char* origen, std::size_t cuantos);

  private:
    ssl_st* sesion_;
    bool sana_ = false;
};

}  // namespace tarvoline::server
