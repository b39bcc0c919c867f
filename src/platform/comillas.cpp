#include "platform/comillas.h"

#include <algorithm>

#include "platform/caja.h"

namespace tarvoline::platform {

namespace {

bool esBlanco(char c) {
    return c == ' ' || c == '\t';
}

bool esControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
}

bool esUtf8(std::string_view texto) {
    const std::u32string codigos = codigosDe(texto);
    return std::none_of(codigos.begin(), codigos.end(), [](char32_t c) { return c > 0x10FFFF; });
}

// What a name or value may not hold outside quotes. Bytes that are no UTF-8 go into quotes, so that the file
// stays text.
bool quiereComillas(std::string_view texto, std::string_view reservados) {
    if (texto.empty()) return false;
    return sinBlancos(texto).size() != texto.size() || texto.front() == '"' ||
           texto.find_first_of(reservados) != std::string_view::npos ||
           std::any_of(texto.begin(), texto.end(), esControl) || !esUtf8(texto);
}

void anadirHex(std::string& salida, unsigned char byte) {
    constexpr std::string_view cifras = "0123456789abcdef";
    salida.append("\\x").push_back(cifras[byte >> 4U]);
    salida.push_back(cifras[byte & 0xFU]);
}

std::string entreComillas(std::string_view texto) {
    const bool enBytes = !esUtf8(texto);
    std::string salida = "\"";
    for (const char c : texto) {
        const auto byte = static_cast<unsigned char>(c);
        if (const auto escape = escapeDe(c); !escape.empty()) {
            salida += escape;
        } else if (c == '"') {
            salida += "\\\"";
        } else if (esControl(c) || (enBytes && byte >= 0x80)) {
            anadirHex(salida, byte);
        } else {
            salida.push_back(c);
        }
    }
    return salida + '"';
}

int cifraHex(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Takes one escape behind its backslash off `texto`; false when there is no such escape.
bool leerEscape(std::string_view& texto, std::string& salida) {
    if (texto.empty()) return false;
    const char c = texto.front();
    texto.remove_prefix(1);
    switch (c) {
        case '\\':
        case '"':
            salida.push_back(c);
            return true;
        case 'n':
            salida.push_back('\n');
            return true;
        case 'r':
            salida.push_back('\r');
            return true;
        case 't':
            salida.push_back('\t');
            return true;
        case 'x':
            break;
        default:
            return false;
    }
    if (texto.size() < 2 || cifraHex(texto[0]) < 0 || cifraHex(texto[1]) < 0) return false;
    salida.push_back(static_cast<char>(cifraHex(texto[0]) * 16 + cifraHex(texto[1])));
    texto.remove_prefix(2);
    return true;
}

// Takes a text in quotes off `texto`, which starts with one.
std::optional<std::string> leerComillas(std::string_view& texto) {
    std::string salida;
    texto.remove_prefix(1);
    while (!texto.empty()) {
        const char c = texto.front();
        texto.remove_prefix(1);
        if (c == '"') return salida;
        if (c != '\\') {
            salida.push_back(c);
        } else if (!leerEscape(texto, salida)) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

}  // namespace

std::string_view sinBlancos(std::string_view texto) {
    while (!texto.empty() && esBlanco(texto.front()))
        texto.remove_prefix(1);
    while (!texto.empty() && esBlanco(texto.back()))
        texto.remove_suffix(1);
    return texto;
}

std::string_view escapeDe(char c) {
    switch (c) {
        case '\\':
            return "\\\\";
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            return {};
    }
}

std::string escribirNombre(std::string_view nombre) {
    const bool comentario = !nombre.empty() && (nombre.front() == ';' || nombre.front() == '#');
    if (nombre.empty() || comentario || quiereComillas(nombre, "\"\\[]=")) return entreComillas(nombre);
    return std::string(nombre);
}

std::string escribirValor(std::string_view valor) {
    return quiereComillas(valor, {}) ? entreComillas(valor) : std::string(valor);
}

std::optional<std::string> leerNombre(std::string_view& texto, char final) {
    std::string nombre;
    if (!texto.empty() && texto.front() == '"') {
        const auto leido = leerComillas(texto);
        while (!texto.empty() && esBlanco(texto.front()))
            texto.remove_prefix(1);
        if (!leido || texto.empty() || texto.front() != final) return std::nullopt;
        nombre = *leido;
    } else {
        const std::size_t corte = texto.find(final);
        if (corte == std::string_view::npos) return std::nullopt;
        nombre = sinBlancos(texto.substr(0, corte));
        if (nombre.empty() || quiereComillas(nombre, "\"\\[]=")) return std::nullopt;
        texto.remove_prefix(corte);
    }
    texto.remove_prefix(1);
    while (!texto.empty() && esBlanco(texto.front()))
        texto.remove_prefix(1);
    return nombre;
}

std::optional<std::string> leerValor(std::string_view texto) {
    if (texto.empty() || texto.front() != '"') {
        if (quiereComillas(texto, {})) return std::nullopt;
        return std::string(texto);
    }
    auto valor = leerComillas(texto);
    return texto.empty() ? valor : std::nullopt;
}

}  // namespace tarvoline::platform
