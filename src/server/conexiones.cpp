#include "server/conexiones.h"

#include <algorithm>
#include <limits>

#include "server/flujo.h"
#include "server/zocalo.h"

namespace tarvoline::server {
namespace {

// Bodies are taken and given as they are: compressed ones would pass the limit on a request's length, and
// Base64 is not worth the time. The room for what was announced is made at once.
void prepararPeticion(httplib::Request& peticion) {
    peticion.headers.erase("Content-Encoding");
    peticion.headers.erase("Accept-Encoding");
    const auto anunciados = peticion.get_header_value<std::uint64_t>("Content-Length");
    peticion.body.reserve(
        static_cast<std::size_t>(std::min<std::uint64_t>(anunciados, ServidorHttp::maximoPeticion)));
}

}  // namespace

void ColaConexiones::enqueue(std::function<void()> trabajo) {
    const std::lock_guard guardia(cerrojo_);
    trabajos_.push_back(std::move(trabajo));
    if (ociosos_ < trabajos_.size() && hilos_.size() < maximo_) hilos_.emplace_back([this] { trabajar(); });
    hayTrabajo_.notify_one();
}

void ColaConexiones::trabajar() {
    std::unique_lock guardia(cerrojo_);
    for (;;) {
        ++ociosos_;
        hayTrabajo_.wait(guardia, [this] { return fin_ || !trabajos_.empty(); });
        --ociosos_;
        if (trabajos_.empty()) return;
        const std::function<void()> trabajo = std::move(trabajos_.front());
        trabajos_.pop_front();
        guardia.unlock();
        trabajo();
        guardia.lock();
    }
}

void ColaConexiones::shutdown() {
    {
        const std::lock_guard guardia(cerrojo_);
        fin_ = true;
        hayTrabajo_.notify_all();
    }
    for (std::thread& hilo : hilos_)
        hilo.join();
}

ServidorHttp::ServidorHttp(const ContextoTls* tls) : tls_(tls) {
    set_payload_max_length(maximoPeticion);
    // What the replies say of a kept connection.
    set_keep_alive_max_count(std::numeric_limits<int>::max());
    set_keep_alive_timeout(plazoOcioso.count());
    set_socket_options(zocalo::prepararEscucha);
    new_task_queue = [] { return new ColaConexiones(maximoConexiones); };
}

void ServidorHttp::detener() {
    {
        const std::lock_guard guardia(cerrojo_);
        fin_ = true;
        for (const socket_t conexion : abiertas_)
            zocalo::cerrarLectura(conexion);
    }
    stop();
}

bool ServidorHttp::apuntar(socket_t conexion) {
    const std::lock_guard guardia(cerrojo_);
    if (fin_) return false;
    abiertas_.insert(conexion);
    return true;
}

void ServidorHttp::borrar(socket_t conexion) {
    const std::lock_guard guardia(cerrojo_);
    abiertas_.erase(conexion);
}

bool ServidorHttp::process_and_close_socket(socket_t conexion) {
    if (apuntar(conexion)) {
        try {
            atender(conexion);
        } catch (const std::exception& error) {
            if (alFallar) alFallar(error);  // this connection ends, the service does not
        }
        borrar(conexion);
    }
    zocalo::cerrar(conexion);
    return true;
}

void ServidorHttp::atender(socket_t conexion) {
    zocalo::preparar(conexion, plazoLinea);
    Flujo flujo(conexion, tls_);
    if (!flujo.abrir()) return;
    while (!fin_ && flujo.esperarPeticion(plazoOcioso)) {
        bool cerrada = false;
        flujo.empezarPeticion(maximoPeticion);
        const bool atendida = process_request(flujo, false, cerrada, prepararPeticion);
        // A request that was longer than allowed is not read to its end: nothing behind it can be trusted.
        if (!flujo.vaciar() || !atendida || cerrada || flujo.cupoAgotado()) return;
    }
}

}  // namespace tarvoline::server
