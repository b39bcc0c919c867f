#include "server/textos.h"

namespace tarvoline::server {
namespace {

// Length of the well-formed UTF-8 sequence at the start of `texto`; 0 when there is none (RFC 3629).
std::size_t longitudSecuencia(std::string_view texto) {
    const auto octeto = [&](std::size_t i) {
        return i < texto.size() ? static_cast<unsigned char>(texto[i]) : 0U;
    };
    const auto sigue = [&](std::size_t i) { return (octeto(i) & 0xC0U) == 0x80U; };
    const unsigned primero = octeto(0);
    if (primero < 0x80) return 1;
    if (primero >= 0xC2 && primero <= 0xDF) return sigue(1) ? 2 : 0;
    if (primero >= 0xE0 && primero <= 0xEF) {
        const bool corta = primero == 0xE0 && octeto(1) < 0xA0;      // overlong
        const bool sustituto = primero == 0xED && octeto(1) > 0x9F;  // surrogate
        return sigue(1) && sigue(2) && !corta && !sustituto ? 3 : 0;
    }
    if (primero >= 0xF0 && primero <= 0xF4) {
        const bool corta = primero == 0xF0 && octeto(1) < 0x90;
        const bool fuera = primero == 0xF4 && octeto(1) > 0x8F;
        return sigue(1) && sigue(2) && sigue(3) && !corta && !fuera ? 4 : 0;
    }
    return 0;
}

}  // namespace

bool textoLimpio(std::string_view texto, std::size_t maximo) {
    std::size_t caracteres = 0;
    while (!texto.empty()) {
        const std::size_t longitud = longitudSecuencia(texto);
        const auto primero = static_cast<unsigned char>(texto.front());
        if (longitud == 0 || primero < 0x20 || primero == 0x7F || ++caracteres > maximo) return false;
        texto.remove_prefix(longitud);
    }
    return caracteres > 0;
}

}  // namespace tarvoline::server
