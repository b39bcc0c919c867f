// From errno to the numbers of ErrorArchivo.
#pragma once

#include <string_view>

namespace tarvoline::platform::posix {

int numeroDeErrno(int codigo);
[[noreturn]] void lanzar(int codigo, std::string_view ruta);

// True when the call that just failed was interrupted by a signal.
bool interrumpida();

// Repeats a system call that a signal has interrupted.
template <typename Llamada>
auto repetir(Llamada&& llamada) {
    for (;;) {
        const auto resultado = llamada();
        if (resultado >= 0 || !interrumpida()) return resultado;
    }
}

}  // namespace tarvoline::platform::posix
