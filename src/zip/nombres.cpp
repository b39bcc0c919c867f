#include "zip/nombres.h"

#include <array>
#include <vector>

namespace tarvoline::zip {
namespace {

// Code points of the bytes 0x80..0xFF.
constexpr std::array<char16_t, 128> altos{
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7, 0x00EA, 0x00EB, 0x00E8, 0x00EF, 0x00EE,
    0x00EC, 0x00C4, 0x00C5, 0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9, 0x00FF, 0x00D6,
    0x00DC, 0x00F8, 0x00A3, 0x00D8, 0x00D7, 0x0192, 0x00E1, 0x00ED, 0x00F3, 0x00FA, 0x00F1, 0x00D1, 0x00AA,
    0x00BA, 0x00BF, 0x00AE, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB, 0x2591, 0x2592, 0x2593, 0x2502,
    0x2524, 0x00C1, 0x00C2, 0x00C0, 0x00A9, 0x2563, 0x2551, 0x2557, 0x255D, 0x00A2, 0x00A5, 0x2510, 0x2514,
    0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x00E3, 0x00C3, 0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550,
    0x256C, 0x00A4, 0x00F0, 0x00D0, 0x00CA, 0x00CB, 0x00C8, 0x0131, 0x00CD, 0x00CE, 0x00CF, 0x2518, 0x250C,
    0x2588, 0x2584, 0x00A6, 0x00CC, 0x2580, 0x00D3, 0x00DF, 0x00D4, 0x00D2, 0x00F5, 0x00D5, 0x00B5, 0x00FE,
    0x00DE, 0x00DA, 0x00DB, 0x00D9, 0x00FD, 0x00DD, 0x00AF, 0x00B4, 0x00AD, 0x00B1, 0x2017, 0x00BE, 0x00B6,
    0x00A7, 0x00F7, 0x00B8, 0x00B0, 0x00A8, 0x00B7, 0x00B9, 0x00B3, 0x00B2, 0x25A0, 0x00A0,
};

bool esSeparador(char caracter) {
    return caracter == '/' || caracter == '\\';
}

bool empiezaPorUnidad(std::string_view nombre) {
    if (nombre.size() < 2 || nombre[1] != ':') return false;
    const char letra = nombre[0];
    return (letra >= 'A' && letra <= 'Z') || (letra >= 'a' && letra <= 'z');
}

std::vector<std::string_view> componentes(std::string_view nombre) {
    std::vector<std::string_view> partes;
    while (!nombre.empty()) {
        const auto corte = nombre.find_first_of("/\\");
        const auto parte = nombre.substr(0, corte);
        if (!parte.empty() && parte != ".") partes.push_back(parte);
        nombre = corte == std::string_view::npos ? std::string_view{} : nombre.substr(corte + 1);
    }
    return partes;
}

// ".." and what some systems read as such: trailing points and blanks do not count there.
bool sube(std::string_view componente) {
    return componente.find_first_not_of(". ") == std::string_view::npos;
}

void agregarUtf8(std::string& texto, char16_t punto) {
    if (punto < 0x800) {
        texto += static_cast<char>(0xC0 | (punto >> 6));
    } else {
        texto += static_cast<char>(0xE0 | (punto >> 12));
        texto += static_cast<char>(0x80 | ((punto >> 6) & 0x3F));
    }
    texto += static_cast<char>(0x80 | (punto & 0x3F));
}

std::string unirPartes(const std::vector<std::string_view>& partes) {
    std::string ruta;
    for (const auto parte : partes) {
        if (!ruta.empty()) ruta += '/';
        ruta += parte;
    }
    return ruta;
}

}  // namespace

bool esAbsoluto(std::string_view nombre) {
    return empiezaPorUnidad(nombre) || (!nombre.empty() && esSeparador(nombre.front()));
}

std::string nombreRelativo(std::string_view nombre) {
    if (empiezaPorUnidad(nombre)) nombre.remove_prefix(2);
    auto partes = componentes(nombre);
    std::erase(partes, "..");
    return unirPartes(partes);
}

std::optional<std::string> rutaSegura(std::string_view nombre) {
    if (esAbsoluto(nombre) || nombre.find('\0') != std::string_view::npos) return std::nullopt;
    const auto partes = componentes(nombre);
    if (partes.empty()) return std::nullopt;
    for (const auto parte : partes) {
        if (sube(parte)) return std::nullopt;
    }
    return unirPartes(partes);
}

std::string desdeCP850(std::string_view crudo) {
    std::string texto;
    texto.reserve(crudo.size());
    for (const char caracter : crudo) {
        const auto byte = static_cast<unsigned char>(caracter);
        if (byte < 0x80) {
            texto += caracter;
        } else {
            agregarUtf8(texto, altos[byte - 0x80U]);
        }
    }
    return texto;
}

}  // namespace tarvoline::zip
