// Three characters of the text, those that tables hold least of, are compared at many places at once: plain
// loops over a fixed number of bytes, which compilers turn into vector instructions. Only a group of places
// where all three fit somewhere is looked at place by place.
#include "data/buscar_bytes.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tarvoline::data {

namespace {

constexpr std::size_t lugaresPorGrupo = 64;
constexpr std::size_t elegidos = 3;

struct Elegido {
    std::size_t lugar = 0;
    unsigned char letra = 0;
};

// How often a byte stands in accounting records, roughly: blanks and zero bytes fill the fields.
int frecuencia(char c) {
    if (c == ' ' || c == '\0') return 5;
    if (c == '0') return 4;
    if (c >= '1' && c <= '9') return 3;
    if (c >= 'A' && c <= 'Z') return 2;
    return c == '.' || c == '@' ? 2 : 1;
}

std::array<Elegido, elegidos> elegir(std::string_view texto) {
    std::array<Elegido, elegidos> letras;
    for (std::size_t n = 0; n < elegidos; ++n) {
        const auto yaElegido = [&](std::size_t lugar) {
            return std::any_of(letras.begin(), letras.begin() + static_cast<std::ptrdiff_t>(n),
                               [&](const Elegido& e) { return e.lugar == lugar; });
        };
        std::size_t mejor = std::min(n, texto.size() - 1);
        for (std::size_t lugar = 0; lugar < texto.size(); ++lugar) {
            const bool peor = yaElegido(lugar) ||
                              (!yaElegido(mejor) && frecuencia(texto[lugar]) >= frecuencia(texto[mejor]));
            if (!peor) mejor = lugar;
        }
        letras[n] = {mejor, static_cast<unsigned char>(texto[mejor])};
    }
    return letras;
}

// Whether the text may begin at one of the places of the group.
bool grupoPosible(const unsigned char* grupo, const std::array<Elegido, elegidos>& letras) {
    const unsigned char* a = grupo + letras[0].lugar;
    const unsigned char* b = grupo + letras[1].lugar;
    const unsigned char* c = grupo + letras[2].lugar;
    const unsigned char x = letras[0].letra;
    const unsigned char y = letras[1].letra;
    const unsigned char z = letras[2].letra;
    // Nothing is left where all three fit.
    unsigned char menorResto = 255;
    for (std::size_t i = 0; i < lugaresPorGrupo; ++i) {
        const auto resto = static_cast<unsigned char>((a[i] ^ x) | (b[i] ^ y) | (c[i] ^ z));
        menorResto = std::min(menorResto, resto);
    }
    return menorResto == 0;
}

}  // namespace

std::size_t buscarBytes(std::string_view bloque, std::string_view texto, std::size_t desde) {
    if (desde >= bloque.size() || texto.size() > bloque.size() - desde) return std::string_view::npos;
    if (texto.empty()) return desde;
    const auto letras = elegir(texto);
    // Places from here on would be compared beyond the block.
    const std::size_t fin = bloque.size() - texto.size() + 1;
    const auto* bytes = reinterpret_cast<const unsigned char*>(bloque.data());
    std::size_t lugar = desde;
    for (; lugar + lugaresPorGrupo <= fin; lugar += lugaresPorGrupo) {
        if (!grupoPosible(bytes + lugar, letras)) continue;
        for (std::size_t i = lugar; i < lugar + lugaresPorGrupo; ++i) {
            if (bytes[i + letras[0].lugar] == letras[0].letra &&
                std::memcmp(bytes + i, texto.data(), texto.size()) == 0) {
                return i;
            }
        }
    }
    return bloque.find(texto, lugar);
}

}  // namespace tarvoline::data
