// UTF-8 and Windows-1252 (texto.h): decoding, encoding and the composition of accents.
#include <algorithm>
#include <array>

#include "core/texto.h"
#include "core/utf8.h"

namespace tarvoline::core {
namespace {

// Windows-1252 from 0x80 to 0x9F; the five open codes stand for the control character of the same number.
constexpr std::array<char16_t, 32> zonaAlta = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

struct Acento {
    char32_t signo;  // the combining mark
    std::u32string_view letras;
    std::u32string_view compuestas;  // letra by letra
};

// Every letter with a mark that Windows-1252 holds.
constexpr std::array<Acento, 8> acentos = {{
    {0x0300, U"AEIOUaeiou", U"ÀÈÌÒÙàèìòù"},
    {0x0301, U"AEIOUYaeiouy", U"ÁÉÍÓÚÝáéíóúý"},
    {0x0302, U"AEIOUaeiou", U"ÂÊÎÔÛâêîôû"},
    {0x0303, U"ANOano", U"ÃÑÕãñõ"},
    {0x0308, U"AEIOUYaeiouy", U"ÄËÏÖÜŸäëïöüÿ"},
    {0x030A, U"Aa", U"Åå"},
    {0x030C, U"SZsz", U"ŠŽšž"},
    {0x0327, U"Cc", U"Çç"},
}};

// The letter with the mark, or 0 when the code page holds no such letter.
char32_t componer(char32_t letra, char32_t signo) {
    if (signo < 0x0300 || signo > 0x0327) {
        return 0;
    }
    const auto acento =
        std::find_if(acentos.begin(), acentos.end(), [&](const Acento& a) { return a.signo == signo; });
    if (acento == acentos.end()) {
        return 0;
    }
    const auto lugar = acento->letras.find(letra);
    return lugar == std::u32string_view::npos ? 0 : acento->compuestas[lugar];
}

}  // namespace

std::optional<unsigned char> codigoAnsi(char32_t codigo) {
    if (codigo < 0x80 || (codigo >= 0xA0 && codigo <= 0xFF)) {
        return static_cast<unsigned char>(codigo);
    }
    const auto lugar = std::find(zonaAlta.begin(), zonaAlta.end(), codigo);
    if (lugar == zonaAlta.end()) {
        return std::nullopt;
    }
    return static_cast<unsigned char>(0x80 + (lugar - zonaAlta.begin()));
}

char32_t deCodigoAnsi(unsigned char ansi) {
    return ansi >= 0x80 && ansi < 0xA0 ? zonaAlta[ansi - 0x80U] : ansi;
}

LetraUtf8 leerLetra(std::string_view utf8, std::size_t desde) {
    const auto octeto = [&](std::size_t lugar) { return static_cast<unsigned char>(utf8[lugar]); };
    const unsigned char primero = octeto(desde);
    if (primero < 0x80) {
        return {primero, 1, true};
    }
    const std::size_t longitud = primero >= 0xF0 ? 4 : primero >= 0xE0 ? 3 : 2;
    const LetraUtf8 ninguna{primero, 1, false};
    if (primero < 0xC2 || primero > 0xF4 || utf8.size() - desde < longitud) {
        return ninguna;
    }
    char32_t codigo = primero & (0x7FU >> longitud);
    for (std::size_t i = 1; i < longitud; ++i) {
        if ((octeto(desde + i) & 0xC0U) != 0x80U) {
            return ninguna;
        }
        codigo = codigo << 6 | (octeto(desde + i) & 0x3FU);
    }
    // Overlong forms, surrogates and numbers beyond Unicode are no characters.
    const bool corta = (longitud == 3 && codigo < 0x800) || (longitud == 4 && codigo < 0x10000);
    if (corta || (codigo >= 0xD800 && codigo <= 0xDFFF) || codigo > 0x10FFFF) {
        return ninguna;
    }
    return {codigo, longitud, true};
}

void anadirLetra(std::string& destino, char32_t codigo) {
    const auto cola = [&](int desplazamiento) {
        destino += static_cast<char>(0x80U | ((codigo >> desplazamiento) & 0x3FU));
    };
    if ((codigo >= 0xD800 && codigo <= 0xDFFF) || codigo > 0x10FFFF) {
        codigo = 0xFFFD;
    }
    if (codigo < 0x80) {
        destino += static_cast<char>(codigo);
    } else if (codigo < 0x800) {
        destino += static_cast<char>(0xC0U | codigo >> 6);
        cola(0);
    } else if (codigo < 0x10000) {
        destino += static_cast<char>(0xE0U | codigo >> 12);
        cola(6);
        cola(0);
    } else {
        destino += static_cast<char>(0xF0U | codigo >> 18);
        cola(12);
        cola(6);
        cola(0);
    }
}

TextoAnsi aAnsi(std::string_view utf8) {
    std::string bytes;
    bytes.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        LetraUtf8 letra = leerLetra(utf8, i);
        i += letra.longitud;
        if (!letra.valida) {
            bytes += static_cast<char>(letra.codigo);  // such a byte is taken as Windows-1252 already
            continue;
        }
        if (i < utf8.size() && static_cast<unsigned char>(utf8[i]) == 0xCC) {  // U+0300 to U+033F
            const LetraUtf8 signo = leerLetra(utf8, i);
            if (const char32_t compuesta = componer(letra.codigo, signo.codigo); compuesta != 0) {
                letra.codigo = compuesta;
                i += signo.longitud;
            }
        }
        bytes += static_cast<char>(codigoAnsi(letra.codigo).value_or('?'));
    }
    return TextoAnsi(std::move(bytes));
}

std::string aUtf8(std::string_view bytesAnsi) {
    std::string texto;
    texto.reserve(bytesAnsi.size() + bytesAnsi.size() / 8);
    for (const char byte : bytesAnsi) {
        anadirLetra(texto, deCodigoAnsi(static_cast<unsigned char>(byte)));
    }
    return texto;
}

std::string aUtf8(const TextoAnsi& ansi) {
    return aUtf8(std::string_view(ansi.bytes()));
}

std::u32string codigos(std::string_view utf8) {
    std::u32string resultado;
    resultado.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const LetraUtf8 letra = leerLetra(utf8, i);
        resultado += letra.codigo;
        i += letra.longitud;
    }
    return resultado;
}

std::string deCodigos(std::u32string_view codigos) {
    std::string texto;
    texto.reserve(codigos.size());
    for (const char32_t codigo : codigos) {
        anadirLetra(texto, codigo);
    }
    return texto;
}

}  // namespace tarvoline::core
