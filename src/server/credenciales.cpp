#include "server/credenciales.h"

#include <algorithm>
#include <iterator>

#include "core/credencial.h"
#include "server/cifrado.h"

namespace tarvoline::server {

std::string Credenciales::DTS(const std::string& direccion) {
    std::string texto = textoAleatorio(longitudTexto);
    const std::lock_guard guardia(cerrojo_);
    recortar(direccion);
    vivos_.emplace(texto, Entregado{reloj_.ahora() + vida, direccion});
    porDireccion_[direccion].push_back(texto);
    return texto;
}

// Drops what is used or expired at the old end of this address's row, and the oldest when it is full.
void Credenciales::recortar(const std::string& direccion) {
    const auto ahora = reloj_.ahora();
    const auto quitarViejos = [&](std::deque<std::string>& fila) {
        while (!fila.empty()) {
            const auto hallado = vivos_.find(fila.front());
            const bool muerto = hallado == vivos_.end() || hallado->second.caduca <= ahora;
            if (!muerto && fila.size() < maximoPorDireccion) return;
            if (hallado != vivos_.end()) vivos_.erase(hallado);
            fila.pop_front();
        }
    };
    if (const auto fila = porDireccion_.find(direccion); fila != porDireccion_.end()) {
        quitarViejos(fila->second);
        return;
    }
    if (porDireccion_.size() < maximoDirecciones) return;
    for (auto i = porDireccion_.begin(); i != porDireccion_.end();) {
        quitarViejos(i->second);
        i = i->second.empty() ? porDireccion_.erase(i) : std::next(i);
    }
    if (porDireccion_.size() < maximoDirecciones) return;
    for (const std::string& texto : porDireccion_.begin()->second)
        vivos_.erase(texto);
    porDireccion_.erase(porDireccion_.begin());
}

bool Credenciales::gastar(const std::string& texto) {
    const std::lock_guard guardia(cerrojo_);
    const auto hallado = vivos_.find(texto);
    if (hallado == vivos_.end()) return false;
    const bool vivo = hallado->second.caduca > reloj_.ahora();
    const auto fila = porDireccion_.find(hallado->second.direccion);
    vivos_.erase(hallado);
    // A client's texts are used in the order they were given, so the row stays as short as what is open.
    if (fila != porDireccion_.end()) {
        while (!fila->second.empty() && !vivos_.contains(fila->second.front()))
            fila->second.pop_front();
        if (fila->second.empty()) porDireccion_.erase(fila);
    }
    return vivo;
}

bool Credenciales::comprobar(std::string_view credencial, std::string_view clave) {
    const auto claro = core::DecodificarClave(credencial);
    if (!claro || claro->size() < longitudTexto) return false;
    const bool entregado = gastar(claro->substr(0, longitudTexto));
    const bool igual = igualesSinPista(std::string_view(*claro).substr(longitudTexto), clave);
    return entregado && igual;
}

void Identificados::anotar(const std::string& direccion, std::int64_t usuario) {
    const std::lock_guard guardia(cerrojo_);
    const auto ahora = reloj_.ahora();
    if (vistos_.size() >= maximo) {
        std::erase_if(vistos_, [&](const auto& visto) { return visto.second + vida <= ahora; });
        if (vistos_.size() >= maximo) vistos_.erase(vistos_.begin());
    }
    vistos_[direccion + ' ' + std::to_string(usuario)] = ahora;
}

bool Identificados::reciente(const std::string& direccion, std::int64_t usuario) {
    const std::lock_guard guardia(cerrojo_);
    const auto visto = vistos_.find(direccion + ' ' + std::to_string(usuario));
    return visto != vistos_.end() && reloj_.ahora() < visto->second + vida;
}

std::chrono::milliseconds FrenoFallos::fallo(const std::string& direccion) {
    using namespace std::chrono_literals;
    const std::lock_guard guardia(cerrojo_);
    const auto ahora = reloj_.ahora();
    if (cuentas_.size() >= maximo) {
        std::erase_if(cuentas_, [&](const auto& cuenta) { return cuenta.second.ultimo + vida <= ahora; });
        if (cuentas_.size() >= maximo) cuentas_.erase(cuentas_.begin());
    }
    Cuenta& cuenta = cuentas_[direccion];
    if (cuenta.ultimo + vida <= ahora) cuenta.fallos = 0;
    cuenta.ultimo = ahora;
    cuenta.fallos = std::min(cuenta.fallos + 1, 1000);
    return cuenta.fallos <= gratis
               ? 0ms
               : std::min<std::chrono::milliseconds>(100ms * (cuenta.fallos - gratis), 2000ms);
}

}  // namespace tarvoline::server
