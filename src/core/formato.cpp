#include "core/formato.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <locale>

#include "core/texto.h"
#include "core/utf8.h"

namespace tarvoline::core {
namespace {

constexpr int mayorUnidad = 4;

bool esUnidad(int unidad) {
    return unidad >= 0 && unidad <= mayorUnidad;
}

// The whole text as one number; 0 when anything else stands in it.
double numeroExacto(std::string_view texto) {
    std::string numero = Recortar(texto);
    if (numero.size() > 1 && numero.front() == '+' && numero[1] != '-') {
        numero.erase(0, 1);
    }
    double valor = 0;
    const auto leido = std::from_chars(numero.data(), numero.data() + numero.size(), valor);
    const bool entero = leido.ec == std::errc() && leido.ptr == numero.data() + numero.size();
    return entero && std::isfinite(valor) ? valor : 0;
}

SeparadoresNumero leerSeparadoresLocales() {
    const std::array<std::string, 2> ajenos = {",", "."};
    try {
        const std::locale local("");
        // The wide facet: a separator that takes several bytes would come cut from the narrow one.
        const auto& signos = std::use_facet<std::numpunct<wchar_t>>(local);
        SeparadoresNumero separadores;
        anadirLetra(separadores.decimal, static_cast<char32_t>(signos.decimal_point()));
        if (signos.thousands_sep() != L'\0') {
            anadirLetra(separadores.miles, static_cast<char32_t>(signos.thousands_sep()));
        }
        if (separadores.miles.empty() || separadores.miles == separadores.decimal) {
            separadores.miles = separadores.decimal == ajenos[0] ? ajenos[1] : ajenos[0];
        }
        return separadores;
    } catch (const std::runtime_error&) {
        return {ajenos[0], ajenos[1]};  // the environment names a locale that this system lacks
    }
}

// Groups the digits by three.
std::string agrupar(std::string_view cifras, const std::string& separador) {
    std::string texto;
    for (std::size_t i = 0; i < cifras.size(); ++i) {
        if (i > 0 && (cifras.size() - i) % 3 == 0) {
            texto += separador;
        }
        texto += cifras[i];
    }
    return texto;
}

}  // namespace

const SeparadoresNumero& separadoresLocales() {
    static const SeparadoresNumero separadores = leerSeparadoresLocales();
    return separadores;
}

double ConvertirUnidad(double valor, int de, int a, int unidadDePantalla) {
    if (a == unidadPantalla) {
        a = unidadDePantalla;
    }
    if (!esUnidad(de) || !esUnidad(a)) {
        return 0;
    }
    return std::ldexp(valor, 10 * (de - a));
}

double ConvertirUnidad(std::string_view valor, int de, int a, int unidadDePantalla) {
    return ConvertirUnidad(numeroExacto(valor), de, a, unidadDePantalla);
}

std::string formatoImporte(double valor, const SeparadoresNumero& separadores) {
    constexpr double masExacto = 1e13;  // above it a double has no hundredths worth rounding
    if (!std::isfinite(valor)) {
        valor = 0;
    }
    double absoluto = std::fabs(valor);
    if (absoluto < masExacto) {
        absoluto = std::round(absoluto * 100) / 100;
    }
    std::array<char, 330> cifras{};  // the largest double has 309 digits before the point
    const auto escritas = std::snprintf(cifras.data(), cifras.size(), "%.2f", absoluto);
    const std::string_view texto(cifras.data(), static_cast<std::size_t>(escritas));
    const std::string signo = valor < 0 && absoluto > 0 ? "-" : "";
    // Two digits and one character between, whatever the process's own point is.
    return signo + agrupar(texto.substr(0, texto.size() - 3), separadores.miles) + separadores.decimal +
           std::string(texto.substr(texto.size() - 2));
}

std::string formatoEntero(std::int64_t valor, const SeparadoresNumero& separadores) {
    const std::string cifras = std::to_string(valor);
    const bool negativo = cifras.front() == '-';
    return (negativo ? "-" : "") +
           agrupar(std::string_view(cifras).substr(negativo ? 1 : 0), separadores.miles);
}

}  // namespace tarvoline::core
