#include "data/fuente_lineas.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "core/texto.h"

namespace tarvoline::data {

namespace {

constexpr std::string_view blancos = " \t";

std::string_view recortado(std::string_view texto) {
    const auto desde = texto.find_first_not_of(blancos);
    if (desde == std::string_view::npos) return {};
    return texto.substr(desde, texto.find_last_not_of(blancos) - desde + 1);
}

// Every character has a place in the code page and is none of its controls.
bool cabeEnPagina(const std::string& texto) {
    const auto control = [](char32_t codigo) { return codigo < 0x20 || (codigo >= 0x7f && codigo < 0xa0); };
    return core::aUtf8(core::aAnsi(texto)) == texto && !std::ranges::any_of(core::codigos(texto), control);
}

template <typename Numero>
bool esNumero(const std::string& palabra, Numero& numero) {
    const char* fin = palabra.data() + palabra.size();
    const auto [parada, error] = std::from_chars(palabra.data(), fin, numero);
    return error == std::errc{} && parada == fin;
}

}  // namespace

ErrorFuente::ErrorFuente(std::string_view archivo, int linea, const std::string& motivo)
    : std::runtime_error(std::string(archivo) + (linea > 0 ? ":" + std::to_string(linea) : "") + ": " +
                         motivo) {}

LineaFuente::LineaFuente(std::string_view archivo, int numero, std::string_view texto)
    : archivo_(archivo), numero_(numero), resto_(recortado(texto)) {}

void LineaFuente::rechazar(const std::string& motivo) const {
    throw ErrorFuente(archivo_, numero_, motivo);
}

std::string LineaFuente::palabra() {
    const auto fin = resto_.find_first_of(blancos);
    auto palabra = resto_.substr(0, fin);
    resto_ = fin == std::string::npos ? std::string() : std::string(recortado(resto_.substr(fin)));
    return palabra;
}

int LineaFuente::entero(std::string_view que, int menor, int mayor) {
    const auto leida = palabra();
    int numero = 0;
    if (!esNumero(leida, numero) || numero < menor || numero > mayor) {
        rechazar(std::string(que) + " ha de ser un número de " + std::to_string(menor) + " a " +
                 std::to_string(mayor) + ", no \"" + leida + "\"");
    }
    return numero;
}

double LineaFuente::decimal(std::string_view que) {
    const auto leida = palabra();
    double numero = 0;
    if (!esNumero(leida, numero) || !std::isfinite(numero)) {
        rechazar(std::string(que) + " ha de ser un número, no \"" + leida + "\"");
    }
    return numero;
}

std::string LineaFuente::texto(std::string_view que, std::size_t mayor) {
    if (resto_.empty()) rechazar("falta " + std::string(que));
    if (!cabeEnPagina(resto_)) {
        rechazar(std::string(que) + " tiene un carácter sin sitio en Windows-1252");
    }
    if (core::longitudTexto(resto_) > mayor) {
        rechazar(std::string(que) + " tiene más de " + std::to_string(mayor) + " caracteres");
    }
    return std::exchange(resto_, {});
}

void LineaFuente::fin() const {
    if (!resto_.empty()) rechazar("sobra \"" + resto_ + "\"");
}

std::vector<LineaFuente> lineasFuente(std::string_view archivo, std::string_view utf8) {
    std::vector<LineaFuente> lineas;
    int numero = 0;
    for (std::string_view texto : core::Partir(utf8, "\n")) {
        ++numero;
        if (texto.ends_with('\r')) texto.remove_suffix(1);
        texto = recortado(texto);
        if (!texto.empty() && texto.front() != '#') lineas.emplace_back(archivo, numero, texto);
    }
    return lineas;
}

}  // namespace tarvoline::data
