#include "soap/entero.h"

#include <charconv>

#include "soap/valores.h"

namespace tarvoline::soap {

std::int32_t leerEntero(std::string_view texto, std::string_view parametro) {
    const std::string_view blancos = " \t\r\n";
    const std::size_t primero = texto.find_first_not_of(blancos);
    if (primero != std::string_view::npos) {
        std::string_view cifras = texto.substr(primero, texto.find_last_not_of(blancos) - primero + 1);
        if (cifras.starts_with('+') && !cifras.starts_with("+-")) cifras.remove_prefix(1);
        std::int32_t numero = 0;
        const auto [fin, error] = std::from_chars(cifras.data(), cifras.data() + cifras.size(), numero);
        if (error == std::errc{} && fin == cifras.data() + cifras.size()) return numero;
    }
    throw ErrorServicio("el valor de " + std::string(parametro) + " no es un número entero");
}

}  // namespace tarvoline::soap
