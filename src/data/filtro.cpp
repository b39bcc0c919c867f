#include "data/filtro.h"

#include <algorithm>
#include <array>
#include <compare>

#include "core/texto.h"
#include "data/claves_tabla.h"
#include "data/codec.h"
#include "data/fechas.h"
#include "data/utilidades.h"

namespace tarvoline::data {

namespace {

constexpr std::string_view nexo = " AND ";
constexpr std::string_view palabraComo = "LIKE";

struct Signo {
    std::string_view texto;
    Operador operador;
};
// The longer ones first: the first that fits is taken.
constexpr std::array<Signo, 7> signos{{{">=", Operador::mayorIgual},
                                       {"=>", Operador::mayorIgual},
                                       {"<=", Operador::menorIgual},
                                       {"=<", Operador::menorIgual},
                                       {"=", Operador::igual},
                                       {">", Operador::mayor},
                                       {"<", Operador::menor}}};

std::size_t indice(int numero) {
    return static_cast<std::size_t>(numero);
}

char mayusculaAscii(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// Whether the ASCII capitals of `palabra` stand at `lugar`, in any case.
bool estaEn(std::string_view texto, std::size_t lugar, std::string_view palabra) {
    return texto.size() - lugar >= palabra.size() &&
           std::ranges::equal(texto.substr(lugar, palabra.size()), palabra, {}, mayusculaAscii);
}

bool siguePalabra(std::string_view texto, std::size_t lugar) {
    if (lugar >= texto.size()) return false;
    const auto codigo = static_cast<unsigned char>(mayusculaAscii(texto[lugar]));
    return (codigo >= 'A' && codigo <= 'Z') || (codigo >= '0' && codigo <= '9') || codigo == '_' ||
           codigo >= 0x80;
}

struct SignoHallado {
    std::size_t longitud = 0;
    Operador operador = Operador::igual;
};

std::optional<SignoHallado> signoEn(std::string_view texto, std::size_t lugar) {
    for (const Signo& signo : signos) {
        if (core::empiezaPor(texto.substr(lugar), signo.texto)) {
            return SignoHallado{signo.texto.size(), signo.operador};
        }
    }
    const bool como = estaEn(texto, lugar, palabraComo) && (lugar == 0 || texto[lugar - 1] == ' ') &&
                      !siguePalabra(texto, lugar + palabraComo.size());
    if (como) return SignoHallado{palabraComo.size(), Operador::como};
    return std::nullopt;
}

Condicion interpretarParte(std::string_view parte) {
    for (std::size_t lugar = 0; lugar < parte.size(); ++lugar) {
        const auto signo = signoEn(parte, lugar);
        if (!signo) continue;
        const std::string_view valor = parte.substr(lugar + signo->longitud);
        if (signo->operador == Operador::menor && core::empiezaPor(valor, ">")) {
            throw ErrorFiltro("el filtro no tiene el operador <>: " + std::string(parte));
        }
        return {core::Recortar(parte.substr(0, lugar)), signo->operador, core::Recortar(valor)};
    }
    throw ErrorFiltro("una parte del filtro no tiene operador: " + std::string(parte));
}

std::string_view comoTexto(std::string_view bytes) {
    bytes = bytes.substr(0, bytes.find('\0'));
    return bytes.substr(0, bytes.find_last_not_of(' ') + 1);
}

bool esTexto(const CampoTabla& campo) {
    return campo.forma == FormaCampo::texto || campo.forma == FormaCampo::fecha;
}

std::string fechaGuardada(const CapaDatos& capa, const std::string& valor) {
    if (valor.find_first_not_of(" /") == std::string::npos) return {};  // "  /  /  ", perhaps trimmed
    constexpr std::size_t corta = 8, larga = 10, seguida = 6;
    if (valor.size() == corta) return FechaNormal(capa, valor);
    if (valor.size() == larga) return FechaCompleta(valor);
    const bool cifras = std::ranges::all_of(valor, [](char c) { return c >= '0' && c <= '9'; });
    if (valor.size() != seguida || !cifras) return valor;
    return FechaNormal(capa, valor.substr(4, 2) + "/" + valor.substr(2, 2) + "/" + valor.substr(0, 2));
}

// As a limit any other text would lie behind or before all dates.
bool esFechaGuardada(std::string_view valor) {
    constexpr std::size_t largo = 6;
    const auto cifra = [](char c) { return c >= '0' && c <= '9'; };
    return valor.size() == largo && (cifra(valor[0]) || (valor[0] >= 'A' && valor[0] <= 'T')) &&
           std::ranges::all_of(valor.substr(1), cifra);
}

// The number of the field, in the precision that it is kept in.
double numeroDe(const CampoTabla& campo, std::string_view bytes) {
    switch (campo.forma) {
        case FormaCampo::entero16:
            return TextoAEntero(bytes);
        case FormaCampo::entero32:
            return TextoALargo(bytes);
        case FormaCampo::simple:
            return TextoASimple(bytes);
        default:
            return TextoADoble(bytes);
    }
}

double numeroBuscado(const CampoTabla& campo, const std::string& valor) {
    const double numero = valorDeTexto(valor);
    return campo.forma == FormaCampo::simple ? static_cast<float>(numero) : numero;
}

// Nothing compares with a number that is none.
bool seCumple(Operador operador, std::partial_ordering orden) {
    switch (operador) {
        case Operador::igual:
            return std::is_eq(orden);
        case Operador::mayorIgual:
            return std::is_gteq(orden);
        case Operador::menorIgual:
            return std::is_lteq(orden);
        case Operador::mayor:
            return std::is_gt(orden);
        default:
            return std::is_lt(orden);
    }
}

}  // namespace

std::vector<Condicion> interpretarFiltro(std::string_view utf8) {
    std::vector<Condicion> condiciones;
    if (utf8.find_first_not_of(' ') == std::string_view::npos) return condiciones;
    std::size_t desde = 0;
    for (std::size_t lugar = 0; lugar < utf8.size(); ++lugar) {
        if (utf8[lugar] != ' ' || !estaEn(utf8, lugar, nexo)) continue;
        condiciones.push_back(interpretarParte(utf8.substr(desde, lugar - desde)));
        lugar += nexo.size() - 1;
        desde = lugar + 1;
    }
    condiciones.push_back(interpretarParte(utf8.substr(desde)));
    return condiciones;
}

// The last "*" met takes one character more whenever what stands behind it does not fit.
bool coincideComodines(std::string_view texto, std::string_view patron) {
    const std::string propio = MayusculasAnsi(texto);
    const std::string molde = MayusculasAnsi(patron);
    std::size_t t = 0, p = 0;
    std::size_t asterisco = std::string::npos, retorno = 0;
    while (t < propio.size()) {
        if (p < molde.size() && molde[p] == '*') {
            asterisco = p++;
            retorno = t;
        } else if (p < molde.size() && (molde[p] == '?' || molde[p] == propio[t])) {
            ++p;
            ++t;
        } else if (asterisco != std::string::npos) {
            p = asterisco + 1;
            t = ++retorno;
        } else {
            return false;
        }
    }
    return molde.find_first_not_of('*', p) == std::string::npos;
}

Filtro::Filtro(const CapaDatos& capa, const DefinicionTabla& definicion,
               const std::vector<Condicion>& condiciones) {
    std::vector<int> campos;
    for (const Condicion& condicion : condiciones) {
        const int numero = definicion.campoDeNombre(condicion.columna);
        if (numero == 0) throw ErrorFiltro("la tabla no tiene la columna " + condicion.columna);
        Prueba prueba{definicion.campo(numero), condicion.operador, core::aAnsi(condicion.valor).bytes(), 0};
        prueba.valor.erase(prueba.valor.find_last_not_of(' ') + 1);
        const bool patron = prueba.operador == Operador::como;
        if (prueba.campo.forma == FormaCampo::fecha && !patron) {
            prueba.valor = fechaGuardada(capa, prueba.valor);
            const bool limite = prueba.operador != Operador::igual;
            if (limite && !prueba.valor.empty() && !esFechaGuardada(prueba.valor))
                throw ErrorFiltro("no es una fecha: " + prueba.valor);
        }
        prueba.numero = numeroBuscado(prueba.campo, prueba.valor);
        pruebas_.push_back(std::move(prueba));
        campos.push_back(numero);
    }
    buscarLlave(definicion, campos);
}

// `campos`: the field number of each test.
void Filtro::buscarLlave(const DefinicionTabla& definicion, const std::vector<int>& campos) {
    std::vector<std::string> valores(definicion.campos.size());
    for (std::size_t i = 0; i < pruebas_.size(); ++i) {
        const Prueba& prueba = pruebas_[i];
        const bool sirve = prueba.operador == Operador::igual && esTexto(prueba.campo) &&
                           !prueba.valor.empty() && prueba.valor.size() <= indice(prueba.campo.bytes);
        if (sirve) ajustarCampo(prueba.campo, prueba.valor, valores[indice(campos[i])]);
    }
    std::size_t mayor = 0;
    for (int clave = 1; clave <= definicion.numeroClaves; ++clave) {
        const auto& segmentos = definicion.claves[indice(clave)];
        const bool cubierta = std::ranges::all_of(segmentos, [&](const SegmentoClave& segmento) {
            return !valores[indice(segmento.campo)].empty();
        });
        if (!cubierta || segmentos.size() <= mayor) continue;
        mayor = segmentos.size();
        llave_.emplace(Llave{clave, {}});
        anadirClave(definicion, clave, valores, llave_->texto);
    }
}

bool Filtro::supera(const Prueba& prueba, std::string_view bytes) {
    const bool texto = esTexto(prueba.campo);
    if (prueba.operador == Operador::como) {
        if (texto) return coincideComodines(comoTexto(bytes), prueba.valor);
        std::string numero;
        descifrarCampo(prueba.campo, bytes, numero);
        return coincideComodines(numero, prueba.valor);
    }
    if (texto) return seCumple(prueba.operador, comoTexto(bytes) <=> prueba.valor);
    return seCumple(prueba.operador, numeroDe(prueba.campo, bytes) <=> prueba.numero);
}

bool Filtro::cumple(std::string_view registro) const {
    return std::ranges::all_of(pruebas_, [&](const Prueba& prueba) {
        return supera(prueba,
                      registro.substr(indice(prueba.campo.desplazamiento), indice(prueba.campo.bytes)));
    });
}

}  // namespace tarvoline::data
