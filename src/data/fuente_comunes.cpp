#include "data/fuente_comunes.h"

#include <algorithm>
#include <functional>
#include <map>

#include "data/monedas.h"
#include "data/tipos_iva.h"

namespace tarvoline::data {

namespace {

// Records by their number.
using Fichas = std::map<int, std::string>;

Fichas leerFichas(std::string_view archivo, std::string_view utf8, std::string_view orden, int menor,
                  int mayor, const std::function<std::string(LineaFuente&)>& leer) {
    Fichas fichas;
    for (auto& linea : lineasFuente(archivo, utf8)) {
        if (const auto dada = linea.palabra(); dada != orden) {
            linea.rechazar("\"" + dada + "\" no es " + std::string(orden));
        }
        const int numero = linea.entero("el número", menor, mayor);
        if (!fichas.emplace(numero, leer(linea)).second) {
            linea.rechazar("el número " + std::to_string(numero) + " está dos veces");
        }
    }
    if (fichas.empty()) throw ErrorFuente(archivo, 0, "no hay ningún dato " + std::string(orden));
    return fichas;
}

std::string juntar(const Fichas& fichas, int desde, int hasta, const std::string& vacia) {
    std::string bytes;
    for (int numero = desde; numero <= hasta; ++numero) {
        const auto ficha = fichas.find(numero);
        bytes += ficha == fichas.end() ? vacia : ficha->second;
    }
    return bytes;
}

std::string leerMoneda(LineaFuente& linea) {
    constexpr int mayorDecimales = 9;
    constexpr std::size_t anchoAbreviatura = 3, anchoNombre = 22;
    FilaMoneda fila;
    fila.abreviatura = linea.palabra();
    const bool letras = std::ranges::all_of(fila.abreviatura, [](char c) { return c >= 'A' && c <= 'Z'; });
    if (!letras || fila.abreviatura.size() != anchoAbreviatura) {
        linea.rechazar("una abreviatura son tres letras mayúsculas, no \"" + fila.abreviatura + "\"");
    }
    fila.decimales = linea.entero("el número de decimales", 0, mayorDecimales);
    fila.decimalesEnVigor = fila.decimales;
    fila.cambio = linea.decimal("el cambio");
    if (fila.cambio <= 0) linea.rechazar("el cambio ha de ser mayor que 0");
    fila.nombre = linea.texto("el nombre", anchoNombre);
    return componerMoneda(fila);
}

float porcentaje(LineaFuente& linea, std::string_view que) {
    constexpr double mayor = 100;
    const double valor = linea.decimal(que);
    if (valor < 0 || valor > mayor) linea.rechazar(std::string(que) + " ha de estar entre 0 y 100");
    return static_cast<float>(valor);
}

std::string leerTipo(LineaFuente& linea) {
    constexpr std::size_t anchoDescripcion = 21;
    TipoIva tipo;
    tipo.Cuota = porcentaje(linea, "la cuota");
    tipo.Recargo = porcentaje(linea, "el recargo");
    tipo.Descripción = linea.texto("el nombre", anchoDescripcion);
    return componerTipoIva(tipo);
}

}  // namespace

std::string compilarMonedas(std::string_view archivo, std::string_view utf8) {
    constexpr int ultima = static_cast<int>(numeroMonedas) - 1;
    const auto filas = leerFichas(archivo, utf8, "moneda", 0, ultima, leerMoneda);
    return juntar(filas, 0, ultima, componerMoneda({}));
}

std::string compilarTiposIva(std::string_view archivo, std::string_view utf8) {
    const auto tipos = leerFichas(archivo, utf8, "tipo", 1, maxTiposIva, leerTipo);
    return juntar(tipos, 1, tipos.rbegin()->first, componerTipoIva({}));
}

}  // namespace tarvoline::data
