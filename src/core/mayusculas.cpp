// Upper and lower case (texto.h) of Latin-1 and Latin Extended-A, which holds every letter of the languages
// the program meets and every letter of Windows-1252 that has both cases in it.
#include "core/texto.h"
#include "core/utf8.h"

namespace tarvoline::core {
namespace {

enum class Caja { mayuscula, minuscula };

// Latin Extended-A runs in pairs, upper case first: from an even number in some stretches, from an odd one in
// others.
char32_t parExtendido(char32_t codigo, Caja caja) {
    const bool pares = (codigo >= 0x100 && codigo <= 0x12F) || (codigo >= 0x132 && codigo <= 0x137) ||
                       (codigo >= 0x14A && codigo <= 0x177);
    const bool impares = (codigo >= 0x139 && codigo <= 0x148) || (codigo >= 0x179 && codigo <= 0x17E);
    if (!pares && !impares) {
        return codigo;
    }
    const bool esMayuscula = (codigo % 2 == 0) == pares;
    if (caja == Caja::mayuscula) {
        return esMayuscula ? codigo : codigo - 1;
    }
    return esMayuscula ? codigo + 1 : codigo;
}

char32_t aMayuscula(char32_t codigo) {
    if ((codigo >= 'a' && codigo <= 'z') || (codigo >= 0xE0 && codigo <= 0xFE && codigo != 0xF7)) {
        return codigo - 0x20;
    }
    return codigo == 0xFF ? 0x178 : parExtendido(codigo, Caja::mayuscula);
}

char32_t aMinuscula(char32_t codigo) {
    if ((codigo >= 'A' && codigo <= 'Z') || (codigo >= 0xC0 && codigo <= 0xDE && codigo != 0xD7)) {
        return codigo + 0x20;
    }
    return codigo == 0x178 ? 0xFF : parExtendido(codigo, Caja::minuscula);
}

// Bytes that are no characters stay as they are.
template <typename Cambio>
std::string cambiarCaja(std::string_view utf8, Cambio cambio) {
    std::string resultado;
    resultado.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        if (byte < 0x80) {
            resultado += static_cast<char>(cambio(byte));
            ++i;
            continue;
        }
        const LetraUtf8 letra = leerLetra(utf8, i);
        if (letra.valida) {
            anadirLetra(resultado, cambio(letra.codigo));
        } else {
            resultado += utf8[i];
        }
        i += letra.longitud;
    }
    return resultado;
}

}  // namespace

std::string Mayusculas(std::string_view utf8) {
    return cambiarCaja(utf8, aMayuscula);
}

std::string Minusculas(std::string_view utf8) {
    return cambiarCaja(utf8, aMinuscula);
}

bool igualSinCaja(std::string_view a, std::string_view b) {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        const LetraUtf8 una = leerLetra(a, i);
        const LetraUtf8 otra = leerLetra(b, j);
        if (una.valida != otra.valida ||
            (una.valida ? aMinuscula(una.codigo) != aMinuscula(otra.codigo) : una.codigo != otra.codigo)) {
            return false;
        }
        i += una.longitud;
        j += otra.longitud;
    }
    return i == a.size() && j == b.size();
}

}  // namespace tarvoline::core
