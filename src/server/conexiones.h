// The HTTP library's server with this service's own connections: a thread each, kept alive for as long as
// clients need between two pieces, and closed in order when the service ends.
#pragma once

#include <httplib.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "server/tls.h"

namespace tarvoline::server {

// Runs each connection in a thread of its own, up to `maximo` at once; more wait for one to end. Threads are
// made when needed and used again.
class ColaConexiones : public httplib::TaskQueue {
  public:
    explicit ColaConexiones(std::size_t maximo) : maximo_(maximo) {}
    void enqueue(std::function<void()> trabajo) override;
    // What was queued is still done.
    void shutdown() override;

  private:
    void trabajar();

    std::size_t maximo_;
    std::mutex cerrojo_;
    std::condition_variable hayTrabajo_;
    std::deque<std::function<void()>> trabajos_;
    std::vector<std::thread> hilos_;
    std::size_t ociosos_ = 0;
    bool fin_ = false;
};

class ServidorHttp : public httplib::Server {
  public:
    static constexpr std::size_t maximoConexiones = 128;
    static constexpr std::size_t maximoPeticion = 2U * 1024 * 1024;  // bytes: a piece is 350 KB
    static constexpr std::chrono::seconds plazoOcioso{60};           // between two requests
    static constexpr std::chrono::seconds plazoLinea{30};            // a line on which nothing moves

    // `tls` null = plain connections.
    explicit ServidorHttp(const ContextoTls* tls = nullptr);

    // Told of what broke a connection from inside.
    std::function<void(const std::exception&)> alFallar;

    // No new connections; idle ones are closed, running calls are answered. listen_after_bind() then returns.
    void detener();

  private:
    bool process_and_close_socket(socket_t conexion) override;
    void atender(socket_t conexion);
    bool apuntar(socket_t conexion);
    void borrar(socket_t conexion);

    const ContextoTls* tls_;
    std::mutex cerrojo_;
    std::set<socket_t> abiertas_;
    std::atomic<bool> fin_ = false;
};

}  // namespace tarvoline::server
