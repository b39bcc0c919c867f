// Texts on their way into a document: escaped, and checked against what XML 1.0 can carry.
#include <array>

#include "soap/base64.h"
#include "soap/xml.h"

namespace tarvoline::soap {
namespace {

enum Clase : unsigned char { llana, escapada, multibyte, impropia };

constexpr auto clases = [] {
    std::array<Clase, 256> tabla{};
    for (std::size_t i = 0; i < 0x20; ++i)
        tabla[i] = impropia;
    for (std::size_t i = 0x80; i < 0x100; ++i)
        tabla[i] = multibyte;
    tabla['\t'] = tabla['\n'] = llana;
    for (const char c : {'&', '<', '>', '"', '\r'})
        tabla[static_cast<unsigned char>(c)] = escapada;
    return tabla;
}();

Clase claseDe(char c) {
    return clases[static_cast<unsigned char>(c)];
}

std::string_view referencia(char c) {
    switch (c) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        default:
            return "&#13;";
    }
}

// Length of the UTF-8 character at the front, 0 when there is none or XML does not know it: overlong forms,
// surrogates, U+FFFE and U+FFFF.
std::size_t longitudMultibyte(std::string_view texto) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(texto[i]); };
    const unsigned char primero = byte(0);
    const std::size_t longitud = primero >= 0xF0 ? 4 : primero >= 0xE0 ? 3 : 2;
    if (primero < 0xC2 || primero > 0xF4 || texto.size() < longitud) return 0;
    std::uint32_t codigo = primero & (0xFFU >> (longitud + 1));
    for (std::size_t i = 1; i < longitud; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) return 0;
        codigo = codigo << 6U | (byte(i) & 0x3FU);
    }
    constexpr std::array<std::uint32_t, 5> minimo{0, 0, 0x80, 0x800, 0x10000};
    const bool propio = codigo >= minimo[longitud] && codigo <= 0x10FFFF &&
                        (codigo < 0xD800 || codigo > 0xDFFF) && codigo != 0xFFFE && codigo != 0xFFFF;
    return propio ? longitud : 0;
}

// How many bytes from `desde` need no attention.
std::size_t tramoPropio(std::string_view texto, std::size_t desde) {
    std::size_t i = desde;
    while (i < texto.size()) {
        const Clase clase = claseDe(texto[i]);
        if (clase == llana) {
            ++i;
        } else if (clase == multibyte) {
            const std::size_t longitud = longitudMultibyte(texto.substr(i));
            if (longitud == 0) break;
            i += longitud;
        } else {
            break;
        }
    }
    return i - desde;
}

[[noreturn]] void rechazarTexto() {
    throw ErrorServicio("un texto contiene caracteres que no se pueden transmitir");
}

}  // namespace

void escaparXml(std::string_view texto, std::string& destino, Impropio impropio) {
    for (std::size_t i = 0; i < texto.size(); ++i) {
        const std::size_t tramo = tramoPropio(texto, i);
        destino.append(texto, i, tramo);
        i += tramo;
        if (i == texto.size()) return;
        if (claseDe(texto[i]) == escapada) {
            destino += referencia(texto[i]);
        } else if (impropio == Impropio::sustituir) {
            destino += '?';
        } else {
            rechazarTexto();
        }
    }
}

void escribirValor(std::string& xml, const Valor& valor, Impropio impropio) {
    if (const auto* texto = std::get_if<std::string>(&valor)) {
        escaparXml(*texto, xml, impropio);
    } else if (const auto* numero = std::get_if<std::int32_t>(&valor)) {
        xml += std::to_string(*numero);
    } else {
        CodificarBase64(std::get<Bytes>(valor), xml);
    }
}

std::size_t espacioDeValores(std::span<const Valor> valores) {
    std::size_t longitud = 0;
    for (const auto& valor : valores) {
        longitud += 256;
        if (const auto* bytes = std::get_if<Bytes>(&valor)) longitud += longitudBase64(bytes->size());
        if (const auto* texto = std::get_if<std::string>(&valor))
            longitud += texto->size() + texto->size() / 4;
    }
    return longitud;
}

void exigirTextoXml(std::string_view texto) {
    for (std::size_t i = 0; i < texto.size(); ++i) {
        i += tramoPropio(texto, i);
        if (i < texto.size() && claseDe(texto[i]) != escapada) rechazarTexto();
    }
}

}  // namespace tarvoline::soap
