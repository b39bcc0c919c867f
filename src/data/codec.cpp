#include "data/codec.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "core/texto.h"
#include "data/bytes.h"
#include "data/vista_nombrada.h"

namespace tarvoline::data {

namespace {

constexpr int cifrasSimple = 7;
// Decimal numbers of so many digits come back from a double as they went in.
constexpr int cifrasExactas = 15;
constexpr double limiteExacto = 1e15;

template <typename T>
T numeroDe(std::string_view texto) {
    if (texto.size() >= sizeof(T)) return leerNumero<T>(std::as_bytes(std::span(texto)));
    std::array<char, sizeof(T)> bytes{};
    std::ranges::copy(texto, bytes.begin());
    return leerNumero<T>(std::as_bytes(std::span(bytes)));
}

template <typename T>
void ponerEn(char* destino, T valor) {
    ponerNumero(std::as_writable_bytes(std::span(destino, sizeof(T))), valor);
}

[[noreturn]] void noCabe(const CampoTabla& campo, std::string_view texto) {
    throw ErrorCampo("en el campo " + campo.nombre + " no cabe " + std::string(texto));
}

template <typename T>
void ponerEntero(const CampoTabla& campo, std::string_view texto, char* destino) {
    // The rounding mode is never changed, so this rounds half to even.
    const double valor = std::nearbyint(valorDeTexto(texto));
    if (valor < std::numeric_limits<T>::min() || valor > std::numeric_limits<T>::max()) noCabe(campo, texto);
    ponerEn(destino, static_cast<T>(valor));
}

void ponerSimple(const CampoTabla& campo, std::string_view texto, char* destino) {
    const double valor = valorDeTexto(texto);
    const auto simple = static_cast<float>(valor);
    if (!std::isfinite(simple)) noCabe(campo, texto);
    ponerEn(destino, simple);
}

void ponerTextoFijo(std::string_view texto, char* destino, std::size_t ancho) {
    const std::size_t largo = std::min(texto.size(), ancho);
    std::memcpy(destino, texto.data(), largo);
    std::memset(destino + largo, ' ', ancho - largo);
}

// `centimos` / 100, without zeros at its end.
void escribirCentimos(std::int64_t centimos, std::string& texto) {
    constexpr std::size_t decimales = 2;
    std::array<char, 24> letras{};
    const auto magnitud = static_cast<std::uint64_t>(centimos < 0 ? -centimos : centimos);
    const char* fin = std::to_chars(letras.data(), letras.data() + letras.size(), magnitud).ptr;
    const auto cifras = static_cast<std::size_t>(fin - letras.data());
    texto.assign(centimos < 0 ? "-" : "");
    if (cifras <= decimales) {
        texto.append("0.").append(decimales - cifras, '0').append(letras.data(), cifras);
    } else {
        texto.append(letras.data(), cifras - decimales).append(1, '.').append(fin - decimales, decimales);
    }
    texto.erase(texto.find_last_not_of('0') + 1);
    if (texto.back() == '.') texto.pop_back();
}

}  // namespace

std::int16_t TextoAEntero(std::string_view texto) {
    return numeroDe<std::int16_t>(texto);
}

std::int32_t TextoALargo(std::string_view texto) {
    return numeroDe<std::int32_t>(texto);
}

float TextoASimple(std::string_view texto) {
    return numeroDe<float>(texto);
}

double TextoADoble(std::string_view texto) {
    return numeroDe<double>(texto);
}

std::string DobleATexto(double valor) {
    std::string texto(sizeof(double), '\0');
    ponerEn(texto.data(), valor);
    return texto;
}

// A sign, digits and a point, no more than 15 digits: digits and power of ten are exact as doubles, so the
// quotient is the nearest double to the text.
double valorDeTexto(std::string_view texto) {
    static constexpr std::array<double, cifrasExactas + 1> potencias{
        1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const bool negativo = !texto.empty() && texto.front() == '-';
    const std::string_view resto = texto.substr(negativo ? 1 : 0);
    if (resto.empty() || resto.size() > cifrasExactas) return core::Val(texto);
    std::int64_t numero = 0;
    std::size_t decimales = 0;
    bool conPunto = false;
    for (const char c : resto) {
        if (c == '.' && !conPunto) {
            conPunto = true;
        } else if (c >= '0' && c <= '9') {
            numero = numero * 10 + (c - '0');
            if (conPunto) ++decimales;
        } else {
            return core::Val(texto);
        }
    }
    const double valor = static_cast<double>(numero) / potencias[decimales];
    return negativo && numero != 0 ? -valor : valor;
}

// Amounts are whole or have cents; a decimal of 15 digits that is this very double is what 15 digits print.
void ponerTextoDeNumero(double valor, std::string& texto) {
    constexpr double centimos = 100;
    if (std::fabs(valor) < limiteExacto / centimos) {
        const double numero = std::nearbyint(valor * centimos);
        if (numero / centimos == valor) {
            escribirCentimos(static_cast<std::int64_t>(numero), texto);
            return;
        }
    }
    texto = textoDeNumero(valor, cifrasExactas);
}

void descifrarCampo(const CampoTabla& campo, std::string_view bytes, std::string& texto) {
    switch (campo.forma) {
        case FormaCampo::entero16:
            texto = std::to_string(TextoAEntero(bytes));
            break;
        case FormaCampo::entero32:
            texto = std::to_string(TextoALargo(bytes));
            break;
        case FormaCampo::simple:
            texto = textoDeNumero(static_cast<double>(TextoASimple(bytes)), cifrasSimple);
            break;
        case FormaCampo::doble:
            ponerTextoDeNumero(TextoADoble(bytes), texto);
            break;
        case FormaCampo::texto:
        case FormaCampo::fecha:
            texto.assign(bytes);
            break;
    }
}

void cifrarCampo(const CampoTabla& campo, std::string_view texto, char* destino) {
    switch (campo.forma) {
        case FormaCampo::entero16:
            ponerEntero<std::int16_t>(campo, texto, destino);
            break;
        case FormaCampo::entero32:
            ponerEntero<std::int32_t>(campo, texto, destino);
            break;
        case FormaCampo::simple:
            ponerSimple(campo, texto, destino);
            break;
        case FormaCampo::doble:
            ponerEn(destino, valorDeTexto(texto));
            break;
        case FormaCampo::texto:
        case FormaCampo::fecha:
            ponerTextoFijo(texto, destino, static_cast<std::size_t>(campo.bytes));
            break;
    }
}

void descifrarRegistro(const DefinicionTabla& definicion, std::string_view bytes,
                       std::vector<std::string>& campos) {
    for (std::size_t i = 1; i < definicion.campos.size(); ++i) {
        const CampoTabla& campo = definicion.campos[i];
        const auto desde = static_cast<std::size_t>(campo.desplazamiento);
        descifrarCampo(campo, bytes.substr(desde, static_cast<std::size_t>(campo.bytes)), campos[i]);
    }
}

void cifrarRegistro(const DefinicionTabla& definicion, const std::vector<std::string>& campos,
                    std::string& bytes) {
    bytes.resize(static_cast<std::size_t>(definicion.gLongitudRegistro));
    for (std::size_t i = 1; i < definicion.campos.size(); ++i) {
        cifrarCampo(definicion.campos[i], campos[i], bytes.data() + definicion.campos[i].desplazamiento);
    }
}

void ajustarCampo(const CampoTabla& campo, std::string_view bytes, std::string& texto) {
    texto.assign(bytes);
    if (campo.forma == FormaCampo::texto || campo.forma == FormaCampo::fecha) {
        texto.resize(static_cast<std::size_t>(campo.bytes), ' ');
    }
}

void blanquearCampos(const DefinicionTabla& definicion, std::vector<std::string>& campos) {
    campos.resize(definicion.campos.size());
    for (std::size_t i = 1; i < campos.size(); ++i) {
        campos[i].assign(static_cast<std::size_t>(definicion.campos[i].bytes), ' ');
    }
}

bool estaVacio(std::string_view bytes) {
    return std::ranges::all_of(bytes, [](char c) { return c == ' ' || c == '\0'; });
}

EstadoRegistro estadoDeRegistro(std::string_view bytes) {
    if (bytes.empty()) return EstadoRegistro::sinEscribir;
    if (bytes.front() == '\0' && bytes.find_first_not_of('\0') == std::string_view::npos) {
        return EstadoRegistro::sinEscribir;
    }
    const bool marcado =
        core::empiezaPor(bytes, marcaAnulado) && estaVacio(bytes.substr(marcaAnulado.size()));
    return marcado ? EstadoRegistro::anulado : EstadoRegistro::vivo;
}

}  // namespace tarvoline::data
