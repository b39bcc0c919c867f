#include "motor/orden.h"

#include <algorithm>
#include <limits>

namespace tarvoline::motor {

namespace {

constexpr char separador = '\\';
constexpr char barraEnClave = '\x1F';
constexpr std::uint32_t mayorRegistro = std::numeric_limits<std::int32_t>::max();

// Takes the fields of a command one by one.
class Campos {
  public:
    explicit Campos(std::string_view texto) : resto_(texto) {}

    bool quedan() const { return !acabado_; }
    std::string_view tomar() {
        const std::size_t fin = resto_.find(separador);
        const std::string_view campo = resto_.substr(0, fin);
        acabado_ = fin == std::string_view::npos;
        resto_ = acabado_ ? std::string_view{} : resto_.substr(fin + 1);
        return campo;
    }
    std::string_view tomarResto() {
        acabado_ = true;
        return resto_;
    }

  private:
    std::string_view resto_;
    bool acabado_ = false;
};

bool numero(std::string_view campo, std::uint32_t tope, std::uint32_t& valor) {
    if (!campo.empty() && campo.front() == ' ') campo.remove_prefix(1);
    if (campo.empty()) return false;
    std::uint64_t suma = 0;
    for (const char cifra : campo) {
        if (cifra < '0' || cifra > '9') return false;
        suma = suma * 10 + static_cast<std::uint64_t>(cifra - '0');
        if (suma > tope) return false;
    }
    valor = static_cast<std::uint32_t>(suma);
    return true;
}

bool tomarNumero(Campos& campos, std::uint32_t tope, std::uint32_t& valor) {
    return campos.quedan() && numero(campos.tomar(), tope, valor);
}

bool tomarTabla(Campos& campos, Orden& orden) {
    return tomarNumero(campos, maxTablas - 1, orden.tabla);
}

bool tomarClave(Campos& campos, unsigned& clave) {
    return tomarNumero(campos, 255, clave) && clave > 0;
}

void ponerValor(std::string_view texto, Orden& orden) {
    orden.valor = texto;
    std::replace(orden.valor.begin(), orden.valor.end(), separador, barraEnClave);
}

bool busqueda(Campos& campos, Orden& orden) {
    if (!tomarClave(campos, orden.clave) || !tomarTabla(campos, orden) || !campos.quedan()) return false;
    ponerValor(campos.tomarResto(), orden);
    return true;
}

bool extremo(Campos& campos, Orden& orden) {
    if (!tomarClave(campos, orden.clave) || !tomarTabla(campos, orden)) return false;
    return !campos.quedan() || campos.tomarResto().empty();
}

bool vecina(Campos& campos, Orden& orden, std::string_view marca) {
    if (!tomarClave(campos, orden.clave)) return false;
    std::uint32_t segundo = 0;
    std::uint32_t esperado = 0;
    if (!tomarNumero(campos, 999999, segundo) || !numero(marca, 999999, esperado)) return false;
    if (segundo != esperado || !tomarTabla(campos, orden) || !campos.quedan()) return false;
    ponerValor(campos.tomarResto(), orden);
    return true;
}

bool textos(Campos& campos, Orden& orden) {
    while (campos.quedan())
        orden.textos.push_back(campos.tomar());
    return !orden.textos.empty();
}

bool borrado(Campos& campos, Orden& orden) {
    if (!tomarNumero(campos, mayorRegistro, orden.registro) || !campos.quedan()) return false;
    return campos.tomar() == "Y" && tomarTabla(campos, orden) && textos(campos, orden);
}

bool cambio(Campos& campos, Orden& orden) {
    Orden::Cambio uno;
    if (!tomarClave(campos, uno.clave)) return false;
    if (!tomarNumero(campos, mayorRegistro, orden.registro) || !tomarTabla(campos, orden)) return false;
    for (;;) {
        if (!campos.quedan()) return false;
        uno.antiguo = campos.tomar();
        if (!campos.quedan()) return false;
        uno.nuevo = campos.tomar();
        orden.cambios.push_back(uno);
        if (!campos.quedan()) return true;
        if (!tomarClave(campos, uno.clave)) return false;
    }
}

bool soloTabla(Campos& campos, Orden& orden) {
    return tomarTabla(campos, orden) && !campos.quedan();
}

// The field behind the last "/", which goes with it.
bool tomarUltimo(std::string_view& texto, std::string_view& campo) {
    const std::size_t barra = texto.rfind('/');
    if (barra == std::string_view::npos) return false;
    campo = texto.substr(barra + 1);
    texto = texto.substr(0, barra);
    return true;
}

bool archivo(std::string_view texto, Orden& orden) {
    if (texto.size() < 3 || texto[2] != '/') return false;
    const char verbo = texto[1];
    texto.remove_prefix(3);
    std::string_view campo;
    if (!tomarUltimo(texto, campo) || !numero(campo, maxTablas - 1, orden.tabla)) return false;
    if (verbo == 'C') {
        orden.verbo = Verbo::crear;
        if (!tomarUltimo(texto, campo) || campo != "A") return false;
        if (!tomarUltimo(texto, campo) || !numero(campo, 0xFFFF, orden.clave)) return false;
        if (!tomarUltimo(texto, campo) || !numero(campo, 0xFFFF, orden.longitud)) return false;
    } else if (verbo == 'O') {
        orden.verbo = Verbo::abrir;
    } else {
        return false;
    }
    orden.ruta = texto;
    return !texto.empty() && texto.find('\0') == std::string_view::npos;
}

bool conVerbo(char letra, Campos& campos, Orden& orden) {
    switch (letra) {
        case 'S':
            orden.verbo = Verbo::buscar;
            return busqueda(campos, orden);
        case 'G':
            orden.verbo = Verbo::generico;
            return busqueda(campos, orden);
        case 'F':
            orden.verbo = Verbo::primera;
            return extremo(campos, orden);
        case 'L':
            orden.verbo = Verbo::ultima;
            return extremo(campos, orden);
        case 'N':
            orden.verbo = Verbo::siguiente;
            return soloTabla(campos, orden);
        case 'P':
            orden.verbo = Verbo::anterior;
            return soloTabla(campos, orden);
        case 'A':
            orden.verbo = Verbo::encima;
            return vecina(campos, orden, "999999");
        case 'E':
            orden.verbo = Verbo::debajo;
            return vecina(campos, orden, "0");
        case 'I':
            orden.verbo = Verbo::insertar;
            return tomarTabla(campos, orden) && textos(campos, orden);
        case 'D':
            orden.verbo = Verbo::borrar;
            return borrado(campos, orden);
        case 'R':
            orden.verbo = Verbo::cambiar;
            return cambio(campos, orden);
        case 'M':
            orden.verbo = Verbo::vaciar;
            return soloTabla(campos, orden);
        default:
            return false;
    }
}

}  // namespace

bool entender(std::string_view comando, Orden& orden) {
    orden.textos.clear();
    orden.cambios.clear();
    orden.valor.clear();
    if (comando.empty()) return false;
    if (comando.front() == '/') return archivo(comando, orden);
    Campos campos(comando);
    const std::string_view verbo = campos.tomar();
    if (comando == "K") {
        orden.verbo = Verbo::cerrar;
        return true;
    }
    return verbo.size() == 1 && conVerbo(verbo.front(), campos, orden);
}

}  // namespace tarvoline::motor
