#include "server/flujo.h"

#include <algorithm>
#include <cstring>

namespace tarvoline::server {
namespace {

// The HTTP library asks for 4 KiB at a time; a piece is 350 KB of text. One buffer turns 90 system calls into
// a handful.
constexpr std::size_t longitudEntrada = std::size_t{64} * 1024;
constexpr std::size_t longitudSalida = std::size_t{64} * 1024;

}  // namespace

Flujo::Flujo(int conexion, const ContextoTls* tls)
    : conexion_(conexion),
      tls_(tls != nullptr ? std::make_unique<SesionTls>(*tls, conexion) : nullptr),
      remota_(platform::zocalo::remota(conexion)) {}

bool Flujo::esperarPeticion(std::chrono::milliseconds plazo) {
    if (rota_) return false;
    if (leidos_ < entrada_.size() || (tls_ && tls_->hayPendiente())) return true;
    return platform::zocalo::esperarLectura(conexion_, plazo) == platform::zocalo::Espera::listo;
}

std::ptrdiff_t Flujo::recibir(char* destino, std::size_t cuantos) {
    return tls_ ? tls_->leer(destino, cuantos) : platform::zocalo::recibir(conexion_, destino, cuantos);
}

std::ptrdiff_t Flujo::enviar(const char* origen, std::size_t cuantos) {
    return tls_ ? tls_->escribir(origen, cuantos) : platform::zocalo::enviar(conexion_, origen, cuantos);
}

ssize_t Flujo::read(char* destino, std::size_t cuantos) {
    cuantos = std::min(cuantos, cupo_);
    if (cuantos == 0 || rota_) return -1;
    if (leidos_ == entrada_.size()) {
        // Whoever waits for an answer ("100 Continue") must have it before anything more is expected of him.
        if (!vaciar()) return -1;
        entrada_.resize(longitudEntrada);
        const std::ptrdiff_t llegados = recibir(entrada_.data(), entrada_.size());
        entrada_.resize(static_cast<std::size_t>(std::max<std::ptrdiff_t>(llegados, 0)));
        leidos_ = 0;
        if (llegados <= 0) {
            rota_ = llegados < 0;
            return llegados;
        }
    }
    cuantos = std::min(cuantos, entrada_.size() - leidos_);
    std::memcpy(destino, entrada_.data() + leidos_, cuantos);
    leidos_ += cuantos;
    cupo_ -= cuantos;
    return static_cast<ssize_t>(cuantos);
}

ssize_t Flujo::write(const char* origen, std::size_t cuantos) {
    if (rota_) return -1;
    salida_.append(origen, cuantos);
    if (salida_.size() >= longitudSalida && !vaciar()) return -1;
    return static_cast<ssize_t>(cuantos);
}

bool Flujo::vaciar() {
    std::size_t enviados = 0;
    while (enviados < salida_.size() && !rota_) {
        const std::ptrdiff_t ahora = enviar(salida_.data() + enviados, salida_.size() - enviados);
        rota_ = ahora <= 0;
        if (!rota_) enviados += static_cast<std::size_t>(ahora);
    }
    salida_.clear();
    return !rota_;
}

void Flujo::get_remote_ip_and_port(std::string& ip, int& puerto) const {
    ip = remota_.ip;
    puerto = remota_.puerto;
}

void Flujo::get_local_ip_and_port(std::string& ip, int& puerto) const {
    const auto propia = platform::zocalo::local(conexion_);
    ip = propia.ip;
    puerto = propia.puerto;
}

}  // namespace tarvoline::server
