#include "data/seleccion.h"

#include <algorithm>
#include <utility>

#include "data/claves_tabla.h"

namespace tarvoline::data {

namespace {

constexpr std::size_t bytesBloque = std::size_t{1} << 16U;

std::size_t longitudRegistro(const Tablas& tablas, int tabla) {
    return static_cast<std::size_t>(tablas.definicion(tabla).gLongitudRegistro);
}

bool esFila(std::string_view registro, const Filtro& filtro) {
    return estadoDeRegistro(registro) == EstadoRegistro::vivo && filtro.cumple(registro);
}

void ordenarPorCodigo(Tablas& tablas, int tabla, std::vector<std::int32_t>& filas) {
    const DefinicionTabla& def = tablas.definicion(tabla);
    std::vector<std::pair<std::string, std::int32_t>> conCodigo;
    conCodigo.reserve(filas.size());
    std::vector<std::string> campos(def.campos.size());
    std::string bytes;
    for (const std::int32_t registro : filas) {
        bytes.resize(longitudRegistro(tablas, tabla));
        tablas.leerRegistros(tabla, registro, bytes);
        bytes.resize(longitudRegistro(tablas, tabla), ' ');
        descifrarRegistro(def, bytes, campos);
        std::string codigo;
        anadirClave(def, 1, campos, codigo);
        conCodigo.emplace_back(std::move(codigo), registro);
    }
    std::ranges::sort(conCodigo);
    std::ranges::transform(conCodigo, filas.begin(), [](const auto& uno) { return uno.second; });
}

}  // namespace

std::vector<std::int32_t> filasPorClave(Tablas& tablas, int tabla, const Filtro& filtro) {
    std::vector<std::int32_t> filas;
    const auto& llave = filtro.llave().value();
    const std::string clave = std::to_string(llave.clave);
    const std::string numero = std::to_string(tabla);
    const std::string fin = "A\\" + clave + "\\999999\\" + numero + "\\" + llave.texto;
    tablas.gRegistro = 0;
    const std::int32_t detras = tablas.orden(fin) == motor::estado::bien ? tablas.gRegistro : 0;
    std::string bytes;
    tablas.orden("S\\" + clave + "\\" + numero + "\\" + llave.texto);
    // Should the one behind be gone meanwhile, the walk goes on to the end and the filter says who is meant.
    while (tablas.gEstado == motor::estado::bien && tablas.gRegistro != detras) {
        bytes.resize(longitudRegistro(tablas, tabla));
        tablas.leerRegistros(tabla, tablas.gRegistro, bytes);
        if (!bytes.empty() && esFila(bytes, filtro)) filas.push_back(tablas.gRegistro);
        tablas.orden("N\\" + numero);
    }
    return filas;
}

std::vector<std::int32_t> filasPorRecorrido(Tablas& tablas, int tabla, const Filtro& filtro) {
    std::vector<std::int32_t> filas;
    const std::size_t longitud = longitudRegistro(tablas, tabla);
    const std::size_t porBloque = std::max<std::size_t>(1, bytesBloque / longitud);
    std::string bloque;
    for (std::int32_t desde = 1;; desde += static_cast<std::int32_t>(porBloque)) {
        bloque.resize(porBloque * longitud);
        tablas.leerRegistros(tabla, desde, bloque);
        const std::size_t leidos = bloque.size() / longitud;
        for (std::size_t i = 0; i < leidos; ++i) {
            const std::string_view registro = std::string_view(bloque).substr(i * longitud, longitud);
            if (esFila(registro, filtro)) filas.push_back(desde + static_cast<std::int32_t>(i));
        }
        if (leidos < porBloque) return filas;
    }
}

std::vector<std::int32_t> seleccionar(Tablas& tablas, int tabla, const Filtro& filtro, OrdenFilas orden) {
    const bool porClave = filtro.llave() && tablas.ranura(tabla).conClaves;
    auto filas = porClave ? filasPorClave(tablas, tabla, filtro) : filasPorRecorrido(tablas, tabla, filtro);
    if (orden == OrdenFilas::porCodigo) {
        ordenarPorCodigo(tablas, tabla, filas);
    } else {
        std::ranges::sort(filas);
    }
    return filas;
}

}  // namespace tarvoline::data
