#include "core/credencial.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <stdexcept>

#include "core/texto.h"
#include "core/utf8.h"

namespace tarvoline::core {
namespace {

constexpr int mayorValor = 62;
constexpr int topeSuma = 2 * mayorValor;  // sums stay below it, so that taking 62 away once is enough
constexpr int sinValor = -1;

// What one position of the text becomes.
struct Par {
    int cifrado = 0;
    int relleno = 0;
};

Par cifrar(int valor, int relleno, int posicion) {
    int suma = relleno + valor + posicion;
    while (suma >= topeSuma) {
        if (relleno == 0) {
            throw std::overflow_error("Desbordamiento: la clave es demasiado larga");
        }
        --relleno;
        --suma;
    }
    return {suma > mayorValor ? suma - mayorValor : suma, relleno};
}

// The inverse of cifrar. Values 0 and 62 give the same remainder. With 62 the filler was lowered until filler
// and position came to 61 or less, so above that it was 0; below, 0 and 62 cannot be told apart and 62 is
// taken: what is scrambled in earnest is alphanumeric and holds no 0.
int descifrar(const Par& par, int posicion) {
    const int resto = (par.cifrado - par.relleno - posicion) % mayorValor;
    const int valor = resto < 0 ? resto + mayorValor : resto;
    if (valor != 0) {
        return valor;
    }
    return par.relleno + posicion < mayorValor ? mayorValor : 0;
}

// The value of a character of a credential; a filler may have been lowered to 0.
int valorDe(char caracter) {
    const int valor = CaracterAValor(caracter);
    return valor == 0 && caracter != '\0' ? sinValor : valor;
}

}  // namespace

FuenteAleatoria fuenteAleatoria() {
    // Copies of the source share the generator, else two of them would yield the same values.
    auto generador = std::make_shared<std::mt19937>(std::random_device{}());
    return [generador] {
        std::uniform_real_distribution<double> uniforme(0, 1);
        for (;;) {
            const double valor = std::nearbyint(uniforme(*generador) * 100);
            if (valor >= 1 && valor <= mayorValor) {
                return static_cast<int>(valor);
            }
        }
    };
}

std::vector<int> BytesAleatorios(int cuantos, const FuenteAleatoria& fuente) {
    std::vector<int> valores(static_cast<std::size_t>(std::max(cuantos, 0)));
    std::generate(valores.begin(), valores.end(), [&] { return fuente(); });
    return valores;
}

int CaracterAValor(char caracter) {
    if (caracter >= '0' && caracter <= '9') {
        return caracter - 47;
    }
    if (caracter >= 'A' && caracter <= 'Z') {
        return caracter - 54;
    }
    if (caracter >= 'a' && caracter <= 'z') {
        return caracter - 60;
    }
    return 0;
}

char ValorACaracter(int valor) {
    if (valor < 1 || valor > mayorValor) {
        return '\0';
    }
    return static_cast<char>(valor + (valor <= 10 ? 47 : valor <= 36 ? 54 : 60));
}

std::string CodificarClave(std::string_view texto, const FuenteAleatoria& fuente) {
    const std::u32string letras = codigos(Recortar(texto));
    const int llave = BytesAleatorios(1, fuente).front();
    const std::vector<int> rellenos = BytesAleatorios(static_cast<int>(letras.size()), fuente);
    std::string delante;
    std::string detras;
    bool alterna = llave % 2 == 0;
    for (std::size_t i = 0; i < letras.size(); ++i) {
        const int valor = letras[i] < 0x80 ? CaracterAValor(static_cast<char>(letras[i])) : 0;
        const Par par = cifrar(valor, rellenos[i], static_cast<int>(i + 1));
        alterna = !alterna;
        delante += ValorACaracter(alterna ? par.relleno : par.cifrado);
        detras += ValorACaracter(alterna ? par.cifrado : par.relleno);
    }
    return delante + ValorACaracter(llave) + detras;
}

std::optional<std::string> DecodificarClave(std::string_view credencial) {
    if (credencial.size() % 2 == 0) {
        return std::nullopt;
    }
    const std::size_t n = credencial.size() / 2;
    const int llave = CaracterAValor(credencial[n]);
    if (llave == 0) {
        return std::nullopt;
    }
    bool alterna = llave % 2 == 0;
    std::string texto;
    texto.reserve(n);
    for (std::size_t i = 0; i < n; ++i) {
        const int delante = valorDe(credencial[i]);
        const int detras = valorDe(credencial[n + 1 + i]);
        alterna = !alterna;
        const Par par = alterna ? Par{detras, delante} : Par{delante, detras};
        if (par.cifrado <= 0 || par.relleno == sinValor) {
            return std::nullopt;
        }
        texto += ValorACaracter(descifrar(par, static_cast<int>(i + 1)));
    }
    return texto;
}

}  // namespace tarvoline::core
