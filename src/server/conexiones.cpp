#include "server/conexiones.h"

#include <algorithm>
#include <limits>

#include "platform/zocalo.h"
#include "server/flujo.h"

namespace tarvoline::server {
namespace {

// Bodies are taken and given as they are: compressed ones would pass the limit on a request's length, Base64
// is not worth the time, and a few bytes that ask for the same range a thousand times would get it a thousand
// times. The room for what was announced is made at once.
void prepararPeticion(httplib::Request& peticion) {
    peticion.ranges.clear();
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
    medirApuro();
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
        medirApuro();
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

ServidorHttp::ServidorHttp(const ContextoTls* tls, const LimitesConexion& limites)
    : tls_(tls), limites_(limites) {
    set_payload_max_length(maximoPeticion);
    // What the replies say of a kept connection.
    set_keep_alive_max_count(std::numeric_limits<int>::max());
    set_keep_alive_timeout(limites_.ocioso.count());
    set_socket_options(platform::zocalo::prepararEscucha);
    new_task_queue = [this] { return new ColaConexiones(limites_.maximo, apurada_); };
}

void ServidorHttp::detener() {
    {
        const std::lock_guard guardia(cerrojo_);
        fin_ = true;
        for (const auto& [conexion, hasta] : abiertas_)
            platform::zocalo::cerrarLectura(conexion);
    }
    stop();
}

void ServidorHttp::cortarLentas() {
    const std::lock_guard guardia(cerrojo_);
    const auto ahora = std::chrono::steady_clock::now();
    for (const auto& [conexion, hasta] : abiertas_) {
        if (hasta < ahora) platform::zocalo::cortar(conexion);
    }
}

bool ServidorHttp::apuntar(socket_t conexion) {
    const std::lock_guard guardia(cerrojo_);
    if (fin_) return false;
    abiertas_[conexion] = std::chrono::steady_clock::now() + limites_.peticion;
    return true;
}

void ServidorHttp::limitar(socket_t conexion, Instante hasta) {
    const std::lock_guard guardia(cerrojo_);
    abiertas_[conexion] = hasta;
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
    platform::zocalo::cerrar(conexion);
    return true;
}

void ServidorHttp::atender(socket_t conexion) {
    platform::zocalo::preparar(conexion, limites_.linea);
    Flujo flujo(conexion, tls_);
    if (!flujo.abrir()) return;
    for (;;) {
        limitar(conexion, Instante::max());
        if (!esperarPeticion(flujo)) return;
        limitar(conexion, std::chrono::steady_clock::now() + limites_.peticion);
        bool cerrada = false;
        flujo.empezarPeticion(maximoPeticion);
        const bool atendida = process_request(flujo, false, cerrada, prepararPeticion);
        // A request that was longer than allowed is not read to its end: nothing behind it can be trusted.
        if (!flujo.vaciar() || !atendida || cerrada || flujo.cupoAgotado()) return;
    }
}

// Whether a request begins before the line has idled for too long.
bool ServidorHttp::esperarPeticion(Flujo& flujo) {
    constexpr std::chrono::seconds tramo{1};
    for (std::chrono::seconds ocio{0}; ocio < limites_.ocioso && !fin_; ocio += tramo) {
        if (flujo.esperarPeticion(tramo)) return true;
        if (apurada_ && ocio + tramo >= limites_.apurado) return false;
    }
    return false;
}

}  // namespace tarvoline::server
