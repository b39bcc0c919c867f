#include "core/texto.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "core/utf8.h"

namespace tarvoline::core {
namespace {

// Walks over the characters of a number, passing over blanks, tabs and line feeds.
class CursorNumero {
  public:
    explicit CursorNumero(std::string_view texto) : texto_(texto) { saltar(); }

    char actual() const { return lugar_ < texto_.size() ? texto_[lugar_] : '\0'; }
    void avanzar() {
        ++lugar_;
        saltar();
    }
    // Appends the digits that follow to `destino`; how many there were.
    std::size_t tomarCifras(std::string& destino) {
        std::size_t cuantas = 0;
        for (; actual() >= '0' && actual() <= '9'; avanzar()) {
            destino += actual();
            ++cuantas;
        }
        return cuantas;
    }
    // Takes a sign; '\0' when there is none.
    char tomarSigno() {
        const char signo = actual();
        if (signo != '+' && signo != '-') {
            return '\0';
        }
        avanzar();
        return signo;
    }

  private:
    void saltar() {
        while (lugar_ < texto_.size() &&
               (texto_[lugar_] == ' ' || texto_[lugar_] == '\t' || texto_[lugar_] == '\n')) {
            ++lugar_;
        }
    }

    std::string_view texto_;
    std::size_t lugar_ = 0;
};

// The byte at which character number `cuantos` (from 0) behind byte `desde` starts, or the end of the text.
std::size_t avanzarLetras(std::string_view utf8, std::size_t desde, std::size_t cuantos) {
    for (; cuantos > 0 && desde < utf8.size(); --cuantos) {
        desde += leerLetra(utf8, desde).longitud;
    }
    return desde;
}

}  // namespace

std::size_t longitudTexto(std::string_view utf8) {
    std::size_t letras = 0;
    for (std::size_t i = 0; i < utf8.size(); i += leerLetra(utf8, i).longitud) {
        ++letras;
    }
    return letras;
}

std::string Mid(std::string_view utf8, std::size_t desde, std::size_t cuantos) {
    if (desde == 0) {  // there is no character 0: it is asked for and left out
        return cuantos == 0 ? std::string()
                            : Mid(utf8, 1, cuantos == std::string_view::npos ? cuantos : cuantos - 1);
    }
    const std::size_t comienzo = avanzarLetras(utf8, 0, desde - 1);
    const std::size_t final = avanzarLetras(utf8, comienzo, cuantos);
    return std::string(utf8.substr(comienzo, final - comienzo));
}

std::string Recortar(std::string_view texto) {
    const auto primero = texto.find_first_not_of(' ');
    if (primero == std::string_view::npos) {
        return {};
    }
    return std::string(texto.substr(primero, texto.find_last_not_of(' ') - primero + 1));
}

bool empiezaPor(std::string_view texto, std::string_view comienzo) {
    return texto.substr(0, comienzo.size()) == comienzo;
}

std::vector<std::string> Partir(std::string_view texto, std::string_view separador) {
    std::vector<std::string> partes;
    std::size_t desde = 0;
    for (auto lugar = separador.empty() ? std::string_view::npos : texto.find(separador);
         lugar != std::string_view::npos; lugar = texto.find(separador, desde)) {
        partes.emplace_back(texto.substr(desde, lugar - desde));
        desde = lugar + separador.size();
    }
    partes.emplace_back(texto.substr(desde));
    return partes;
}

std::string Sustituir(std::string_view texto, std::string_view viejo, std::string_view nuevo) {
    if (viejo.empty()) {
        return std::string(texto);
    }
    std::string resultado;
    std::size_t desde = 0;
    for (auto lugar = texto.find(viejo); lugar != std::string_view::npos; lugar = texto.find(viejo, desde)) {
        resultado.append(texto, desde, lugar - desde).append(nuevo);
        desde = lugar + viejo.size();
    }
    return resultado.append(texto.substr(desde));
}

double Val(std::string_view texto) {
    CursorNumero cursor(texto);
    std::string numero;
    if (cursor.tomarSigno() == '-') {
        numero = "-";
    }
    std::size_t cifras = cursor.tomarCifras(numero);
    if (cursor.actual() == '.') {
        cursor.avanzar();
        numero += '.';
        cifras += cursor.tomarCifras(numero);
    }
    if (cifras == 0) {
        return 0;
    }
    if (cursor.actual() == 'e' || cursor.actual() == 'E') {
        cursor.avanzar();
        std::string exponente = cursor.tomarSigno() == '-' ? "e-" : "e";
        if (cursor.tomarCifras(exponente) > 0) {
            numero += exponente;
        }
    }
    double valor = 0;
    const auto leido = std::from_chars(numero.data(), numero.data() + numero.size(), valor);
    return leido.ec == std::errc() ? valor : 0;
}

std::int32_t ValEntero(std::string_view texto) {
    // The rounding mode is never changed, so this rounds half to even.
    const double valor = std::nearbyint(Val(texto));
    using Limites = std::numeric_limits<std::int32_t>;
    const bool cabe = valor >= Limites::min() && valor <= Limites::max();
    return cabe ? static_cast<std::int32_t>(valor) : 0;
}

std::string conCeros(std::int64_t numero, int digitos) {
    std::string cifras = std::to_string(numero);
    const bool negativo = cifras.front() == '-';
    const auto escritas = static_cast<std::int64_t>(cifras.size()) - (negativo ? 1 : 0);
    if (escritas < digitos) {
        cifras.insert(negativo ? 1U : 0U, static_cast<std::size_t>(digitos - escritas), '0');
    }
    return cifras;
}

std::string codificarUrl(std::string_view utf8) {
    constexpr std::string_view hexadecimal = "0123456789ABCDEF";
    constexpr std::string_view libres = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    std::string resultado;
    for (const char c : utf8) {
        if (libres.find(c) != std::string_view::npos) {
            resultado += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            resultado += {'%', hexadecimal[byte >> 4U], hexadecimal[byte & 0xFU]};
        }
    }
    return resultado;
}

}  // namespace tarvoline::core
