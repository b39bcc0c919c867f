#include "platform/caja.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace tarvoline::platform {

namespace {

constexpr char32_t byteSuelto = 0x110000;  // first value behind the code points

struct Tramo {
    char32_t desde;
    char32_t hasta;
    char32_t distancia;  // 0: pairs, the capital first
};

// Capital letters by stretches. In a stretch of pairs a capital is every second code from `desde`.
constexpr auto tramos = std::to_array<Tramo>({
    {0x00C0, 0x00D6, 32},
    {0x00D8, 0x00DE, 32},
    {0x0100, 0x012F, 0},
    {0x0132, 0x0137, 0},
    {0x0139, 0x0148, 0},
    {0x014A, 0x0177, 0},
    {0x0179, 0x017E, 0},
    {0x01CD, 0x01DC, 0},
    {0x01DE, 0x01EF, 0},
    {0x01F8, 0x021F, 0},
    {0x0222, 0x0233, 0},
    {0x1E00, 0x1E95, 0},
    {0x1EA0, 0x1EFF, 0},
});

std::size_t longitudSecuencia(unsigned char primero) {
    if (primero < 0x80) return 1;
    if (primero >= 0xC2 && primero <= 0xDF) return 2;
    if (primero >= 0xE0 && primero <= 0xEF) return 3;
    if (primero >= 0xF0 && primero <= 0xF4) return 4;
    return 0;
}

// The code point at `posicion`, which moves behind it.
char32_t siguiente(std::string_view texto, std::size_t& posicion) {
    constexpr std::array<char32_t, 5> minimos = {0, 0, 0x80, 0x800, 0x10000};
    const auto primero = static_cast<unsigned char>(texto[posicion]);
    const std::size_t largo = longitudSecuencia(primero);
    const auto suelto = [&] {
        ++posicion;
        return byteSuelto + primero;
    };
    if (largo == 0 || posicion + largo > texto.size()) return suelto();
    char32_t codigo = largo == 1 ? primero : primero & (0xFFU >> (largo + 1));
    for (std::size_t i = 1; i < largo; ++i) {
        const auto byte = static_cast<unsigned char>(texto[posicion + i]);
        if ((byte & 0xC0U) != 0x80U) return suelto();
        codigo = (codigo << 6U) | (byte & 0x3FU);
    }
    const bool sustituto = codigo >= 0xD800 && codigo <= 0xDFFF;
    if (codigo < minimos[largo] || codigo >= byteSuelto || sustituto) return suelto();
    posicion += largo;
    return codigo;
}

void anadir(std::string& texto, char32_t codigo) {
    const auto byte = [&](char32_t valor) { texto.push_back(static_cast<char>(valor)); };
    if (codigo >= byteSuelto) {
        byte(codigo - byteSuelto);
    } else if (codigo < 0x80) {
        byte(codigo);
    } else if (codigo < 0x800) {
        byte(0xC0U | (codigo >> 6U));
        byte(0x80U | (codigo & 0x3FU));
    } else if (codigo < 0x10000) {
        byte(0xE0U | (codigo >> 12U));
        byte(0x80U | ((codigo >> 6U) & 0x3FU));
        byte(0x80U | (codigo & 0x3FU));
    } else {
        byte(0xF0U | (codigo >> 18U));
        byte(0x80U | ((codigo >> 12U) & 0x3FU));
        byte(0x80U | ((codigo >> 6U) & 0x3FU));
        byte(0x80U | (codigo & 0x3FU));
    }
}

}  // namespace

char32_t plegarCaja(char32_t codigo) {
    if (codigo < 0x80) return codigo >= U'A' && codigo <= U'Z' ? codigo + 32 : codigo;
    switch (codigo) {
        case 0x0178:
            return 0x00FF;  // Ÿ
        case 0x017F:
            return U's';  // long s
        case 0x1E9E:
            return 0x00DF;  // capital sharp s
        case 0x212A:
            return U'k';  // Kelvin sign
        case 0x212B:
            return 0x00E5;  // Ångström sign
        default:
            break;
    }
    for (const Tramo& tramo : tramos) {
        if (codigo < tramo.desde || codigo > tramo.hasta) continue;
        if (tramo.distancia != 0) return codigo + tramo.distancia;
        return (codigo - tramo.desde) % 2 == 0 ? codigo + 1 : codigo;
    }
    return codigo;
}

std::string plegarCaja(std::string_view utf8) {
    std::string plegado;
    plegado.reserve(utf8.size());
    std::size_t posicion = 0;
    while (posicion < utf8.size()) {
        const char c = utf8[posicion];
        if (static_cast<unsigned char>(c) < 0x80) {
            plegado.push_back(c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c);
            ++posicion;
        } else {
            anadir(plegado, plegarCaja(siguiente(utf8, posicion)));
        }
    }
    return plegado;
}

bool igualPlegado(std::string_view a, std::string_view b) {
    if (a == b) return true;
    if (!a.empty() && !b.empty()) {
        // Most names differ in their first letter: no need to fold the rest.
        const auto x = static_cast<unsigned char>(a.front());
        const auto y = static_cast<unsigned char>(b.front());
        if (x < 0x80 && y < 0x80 && plegarCaja(char32_t{x}) != plegarCaja(char32_t{y})) return false;
    }
    return plegarCaja(a) == plegarCaja(b);
}

bool menorPlegado(std::string_view a, std::string_view b) {
    const std::string x = plegarCaja(a);
    const std::string y = plegarCaja(b);
    return x != y ? x < y : a < b;
}

std::u32string codigosDe(std::string_view utf8) {
    std::u32string codigos;
    codigos.reserve(utf8.size());
    std::size_t posicion = 0;
    while (posicion < utf8.size())
        codigos.push_back(siguiente(utf8, posicion));
    return codigos;
}

}  // namespace tarvoline::platform
