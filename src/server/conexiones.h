// The HTTP library's server with this service's own connections: a thread each, kept alive for as long as
// clients need between two pieces, and closed in order when the service ends.
#pragma once

#include <httplib.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "server/tls.h"

namespace tarvoline::server {

class Flujo;

// Runs each connection in a thread of its own, up to `maximo` at once; more wait for one to end, and
// `apurada` is true while they do. Threads are made when needed and used again.
class ColaConexiones : public httplib::TaskQueue {
  public:
    ColaConexiones(std::size_t maximo, std::atomic<bool>& apurada) : maximo_(maximo), apurada_(apurada) {}
    void enqueue(std::function<void()> trabajo) override;
    // What was queued is still done.
    void shutdown() override;

  private:
    void trabajar();
    void medirApuro() { apurada_ = hilos_.size() == maximo_ && trabajos_.size() > ociosos_; }

    std::size_t maximo_;
    std::atomic<bool>& apurada_;
    std::mutex cerrojo_;
    std::condition_variable hayTrabajo_;
    std::deque<std::function<void()>> trabajos_;
    std::vector<std::thread> hilos_;
    std::size_t ociosos_ = 0;
    bool fin_ = false;
};

// What one connection may take from the others.
struct LimitesConexion {
    std::size_t maximo = 128;            // at once
    std::chrono::seconds ocioso{60};     // between two requests
    std::chrono::seconds apurado{5};     // the same while others wait; clients do not use a line again that
                                         // idled for 3 s
    std::chrono::seconds linea{30};      // nothing moves
    std::chrono::seconds peticion{300};  // a request from its first byte to the last of its answer
};

class ServidorHttp : public httplib::Server {
  public:
    static constexpr std::size_t maximoPeticion = std::size_t{2} * 1024 * 1024;  // bytes: a piece is 350 KB

    // `tls` null = plain connections.
    explicit ServidorHttp(const ContextoTls* tls = nullptr, const LimitesConexion& limites = {});

    // Told of what broke a connection from inside.
    std::function<void(const std::exception&)> alFallar;

    // No new connections; idle ones are closed, running calls are answered. listen_after_bind() then returns.
    void detener();
    // Ends the connections whose request takes longer than it may. To be called every few seconds.
    void cortarLentas();

  private:
    using Instante = std::chrono::steady_clock::time_point;
    bool process_and_close_socket(socket_t conexion) override;
    void atender(socket_t conexion);
    bool esperarPeticion(Flujo& flujo);
    bool apuntar(socket_t conexion);
    void limitar(socket_t conexion, Instante hasta);
    void borrar(socket_t conexion);

    const ContextoTls* tls_;
    LimitesConexion limites_;
    std::atomic<bool> apurada_ = false;
    std::mutex cerrojo_;
    std::map<socket_t, Instante> abiertas_;  // and until when what they are at may take
    std::atomic<bool> fin_ = false;
};

}  // namespace tarvoline::server
