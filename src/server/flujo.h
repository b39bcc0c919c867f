// One connection as the HTTP library reads and writes it: plain or TLS, buffered both ways, with a limit of
// bytes a request.
#pragma once

#include <httplib.h>

#include <chrono>
#include <memory>
#include <string>

#include "platform/zocalo.h"
#include "server/tls.h"

namespace tarvoline::server {

class Flujo : public httplib::Stream {
  public:
    // `tls` null = plain. Does not own the socket.
    Flujo(int conexion, const ContextoTls* tls);

    // The TLS handshake where there is one.
    bool abrir() { return !tls_ || tls_->saludar(); }
    // Whether a next request begins within `plazo`.
    bool esperarPeticion(std::chrono::milliseconds plazo);
    // The next request may be `bytes` long, whatever it says of itself; what is longer reads as a broken
    // line.
    void empezarPeticion(std::size_t bytes) { cupo_ = bytes; }
    bool cupoAgotado() const { return cupo_ == 0; }
    // Sends what was written. False when the line is broken.
    bool vaciar();

    bool is_readable() const override { return true; }
    bool is_writable() const override { return !rota_; }
    ssize_t read(char* destino, std::size_t cuantos) override;
    ssize_t write(const char* origen, std::size_t cuantos) override;
    void get_remote_ip_and_port(std::string& ip, int& puerto) const override;
    void get_local_ip_and_port(std::string& ip, int& puerto) const override;
    socket_t socket() const override { return conexion_; }

    const platform::zocalo::Direccion& remota() const { return remota_; }

  private:
    std::ptrdiff_t recibir(char* destino, std::size_t cuantos);
    std::ptrdiff_t enviar(const char* origen, std::size_t cuantos);

    int conexion_;
    std::unique_ptr<SesionTls> tls_;
    platform::zocalo::Direccion remota_;
    std::string entrada_;  // received, not yet read: from `leidos_` on
    std::size_t leidos_ = 0;
    std::string salida_;
    std::size_t cupo_ = 0;
    bool rota_ = false;
};

}  // namespace tarvoline::server
