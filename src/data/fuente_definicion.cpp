#include "data/fuente_definicion.h"

#include <algorithm>
#include <array>

#include "motor/formato.h"

namespace tarvoline::data {

namespace {

constexpr std::size_t mayorTitulo = 23;
constexpr int mayorNumero = 789;  // of two characters

struct Clase {
    std::string_view nombre;
    int tipo;
    int ancho;  // declared where the type gives the bytes: characters that the value takes on paper
};
constexpr Clase claseTexto{"texto", 0, 0};
constexpr std::array<Clase, 6> clases{{claseTexto,
                                       {"entero16", 1, 6},
                                       {"simple", 2, 8},
                                       {"doble", 3, 12},
                                       {"entero32", 4, 11},
                                       {"fecha", 5, 6}}};

const Clase& claseDe(const LineaFuente& linea, std::string_view nombre) {
    for (const auto& clase : clases) {
        if (clase.nombre == nombre) return clase;
    }
    linea.rechazar("\"" + std::string(nombre) + "\" no es una clase de campo");
}

class Lectura {
  public:
    Lectura(std::string_view archivo, const LectorFuente& otra) : archivo_(archivo), otra_(otra) {}

    DefinicionTabla leer(std::string_view utf8) {
        for (auto& linea : lineasFuente(archivo_, utf8)) {
            const auto orden = linea.palabra();
            if (orden == "titulo") {
                leerTitulo(linea);
            } else if (orden == "campo") {
                leerCampo(linea);
            } else if (orden == "campos") {
                leerCampos(linea);
            } else if (orden == "clave") {
                leerClave(linea);
            } else {
                linea.rechazar("\"" + orden + "\" no es titulo, campo, campos ni clave");
            }
        }
        if (definicion_.titulo.empty()) throw ErrorFuente(archivo_, 0, "falta el titulo");
        if (definicion_.gNumeroCampos == 0) throw ErrorFuente(archivo_, 0, "no hay ningún campo");
        // Offsets and positions as every reader of the file finds them.
        return interpretarDefinicion(componerDefinicion(definicion_));
    }

  private:
    void leerTitulo(LineaFuente& linea) {
        if (!definicion_.titulo.empty()) linea.rechazar("otro titulo");
        definicion_.titulo = linea.texto("el titulo", mayorTitulo);
    }

    void leerCampo(LineaFuente& linea) {
        CampoTabla campo;
        campo.posicion = linea.entero("la posición", 1, mayorNumero);
        const auto& clase = claseDe(linea, linea.palabra());
        campo.tipo = clase.tipo;
        campo.ancho = &clase == clases.data() ? linea.entero("el ancho", 1, mayorNumero) : clase.ancho;
        campo.forma = formaDeTipo(campo.tipo);
        campo.nombre = linea.texto("el título", mayorTitulo);
        if (definicion_.campoDeNombre(campo.nombre) != 0) {
            linea.rechazar("el título " + campo.nombre + " está dos veces");
        }
        if (definicion_.campoDePosicion(campo.posicion) != 0) {
            linea.rechazar("la posición " + std::to_string(campo.posicion) + " está dos veces");
        }
        if (definicion_.gNumeroCampos == maxCamposTabla) {
            linea.rechazar("más de " + std::to_string(maxCamposTabla) + " campos");
        }
        ++definicion_.gNumeroCampos;
        definicion_.gCampoDePosicion.at(static_cast<std::size_t>(campo.posicion)) =
            static_cast<std::int16_t>(definicion_.gNumeroCampos);
        definicion_.campos.push_back(std::move(campo));
    }

    void leerCampos(LineaFuente& linea) {
        if (linea.palabra() != "de") linea.rechazar("no es de la forma campos de ARCHIVO");
        if (definicion_.gNumeroCampos != 0) linea.rechazar("campos de va antes de cualquier otro campo");
        const auto nombre = linea.texto("el archivo", std::string::npos);
        const LectorFuente ninguna = [&](std::string_view) -> std::string {
            linea.rechazar(nombre + " toma sus campos de otra fuente");
        };
        const auto tomada = leerFuenteDefinicion(nombre, otra_(nombre), ninguna);
        definicion_.campos = tomada.campos;
        definicion_.gNumeroCampos = tomada.gNumeroCampos;
        definicion_.gCampoDePosicion = tomada.gCampoDePosicion;
    }

    void leerClave(LineaFuente& linea) {
        const int clave = linea.entero("la clave", 1, maxClaves);
        if (clave != definicion_.numeroClaves + 1) {
            linea.rechazar("aquí va la clave " + std::to_string(definicion_.numeroClaves + 1));
        }
        auto& segmentos = definicion_.claves.at(static_cast<std::size_t>(clave));
        for (auto texto = linea.palabra(); !texto.empty(); texto = linea.palabra()) {
            if (segmentos.size() == maxSegmentos) {
                linea.rechazar("más de " + std::to_string(maxSegmentos) + " segmentos");
            }
            segmentos.push_back(segmento(linea, texto));
        }
        if (segmentos.empty()) linea.rechazar("una clave sin segmentos");
        definicion_.numeroClaves = clave;
        if (definicion_.longitudClave(clave) > static_cast<int>(motor::maxLongitud)) {
            linea.rechazar("una clave de más de " + std::to_string(motor::maxLongitud) + " caracteres");
        }
    }

    // "12(1,10)"
    SegmentoClave segmento(const LineaFuente& linea, const std::string& texto) const {
        const auto abre = texto.find('(');
        const auto coma = texto.find(',', std::min(abre, texto.size()));
        if (coma == std::string::npos || texto.back() != ')') {
            linea.rechazar("\"" + texto + "\" no es de la forma posición(primero,caracteres)");
        }
        const auto parte = [&](std::size_t desde, std::size_t hasta, std::string_view que, int mayor) {
            return LineaFuente(archivo_, linea.numero(), texto.substr(desde, hasta - desde))
                .entero(que, 1, mayor);
        };
        const int posicion = parte(0, abre, "la posición", mayorNumero);
        const int numero = definicion_.campoDePosicion(posicion);
        if (numero == 0) linea.rechazar("no hay ningún campo en la posición " + std::to_string(posicion));
        const auto& campo = definicion_.campo(numero);
        if (campo.forma != FormaCampo::texto && campo.forma != FormaCampo::fecha) {
            linea.rechazar(campo.nombre + " es un número: su texto no tiene un largo fijo");
        }
        SegmentoClave segmento{numero, parte(abre + 1, coma, "el primer carácter", campo.ancho), 0};
        segmento.longitud =
            parte(coma + 1, texto.size() - 1, "el número de caracteres", campo.ancho - segmento.inicio + 1);
        return segmento;
    }

    std::string archivo_;
    const LectorFuente& otra_;
    DefinicionTabla definicion_;
};

}  // namespace

DefinicionTabla leerFuenteDefinicion(std::string_view archivo, std::string_view utf8,
                                     const LectorFuente& otra) {
    return Lectura(archivo, otra).leer(utf8);
}

}  // namespace tarvoline::data
