#include "data/fuente_plan.h"

#include <algorithm>
#include <map>

namespace tarvoline::data {

namespace {

constexpr std::size_t digitosSubcuenta = 10;
constexpr std::size_t mayorNivel = 4;
constexpr std::size_t mayorTitulo = 40;

namespace posicion {
constexpr int cuenta = 1;
constexpr int titulo = 2;
constexpr int nivel = 3;
constexpr int analitica = 6;
}  // namespace posicion

struct CuentaLeida {
    CuentaPlan cuenta;
    LineaFuente linea;  // to tell where it stands
};
using CuentasLeidas = std::map<std::string, CuentaLeida>;

bool esCodigo(std::string_view codigo) {
    return !codigo.empty() && codigo.find_first_not_of("0123456789") == std::string_view::npos &&
           (codigo.size() <= mayorNivel || codigo.size() == digitosSubcuenta);
}

void leerCuenta(LineaFuente& linea, const std::string& codigo, CuentasLeidas& leidas) {
    if (!esCodigo(codigo)) {
        linea.rechazar("\"" + codigo + "\" no es una cuenta de una a cuatro cifras, ni de diez");
    }
    const int nivel = codigo.size() == digitosSubcuenta ? 0 : static_cast<int>(codigo.size());
    const CuentaPlan cuenta{codigo, linea.texto("el título", mayorTitulo), nivel};
    if (!leidas.try_emplace(codigo, CuentaLeida{cuenta, linea}).second) {
        linea.rechazar("la cuenta " + codigo + " está dos veces");
    }
}

void leerCuentas(std::string_view archivo, std::string_view utf8, const LectorFuente& otra,
                 CuentasLeidas& leidas) {
    for (LineaFuente& linea : lineasFuente(archivo, utf8)) {
        const std::string palabra = linea.palabra();
        if (palabra != "cuentas") {
            leerCuenta(linea, palabra, leidas);
            continue;
        }
        if (linea.palabra() != "de") linea.rechazar("no es de la forma cuentas de ARCHIVO");
        const std::string nombre = linea.texto("el archivo", std::string::npos);
        const LectorFuente ninguna = [&](std::string_view) -> std::string {
            linea.rechazar(nombre + " toma sus cuentas de otra fuente");
        };
        leerCuentas(nombre, otra(nombre), ninguna, leidas);
    }
}

void exigirMayores(const CuentasLeidas& leidas) {
    for (const auto& [codigo, leida] : leidas) {
        for (std::size_t nivel = 1; nivel < std::min(codigo.size(), mayorNivel + 1); ++nivel) {
            if (!leidas.contains(codigo.substr(0, nivel))) {
                leida.linea.rechazar(codigo + ": falta su mayor " + codigo.substr(0, nivel));
            }
        }
    }
}

}  // namespace

std::vector<CuentaPlan> leerFuentePlan(std::string_view archivo, std::string_view utf8,
                                       const LectorFuente& otra) {
    CuentasLeidas leidas;
    leerCuentas(archivo, utf8, otra, leidas);
    if (leidas.empty()) throw ErrorFuente(archivo, 0, "no hay ninguna cuenta");
    exigirMayores(leidas);
    std::vector<CuentaPlan> cuentas;
    cuentas.reserve(leidas.size());
    for (auto& [codigo, leida] : leidas)
        cuentas.push_back(std::move(leida.cuenta));
    return cuentas;
}

void grabarPlan(Tablas& tablas, int tabla, const std::vector<CuentaPlan>& cuentas) {
    for (const CuentaPlan& cuenta : cuentas) {
        tablas.blanquear(tabla);
        tablas.ponerTexto(tabla, posicion::cuenta, cuenta.cuenta);
        tablas.ponerTexto(tabla, posicion::titulo, cuenta.titulo);
        tablas.ponerTexto(tabla, posicion::nivel, std::to_string(cuenta.nivel));
        tablas.ponerTexto(tabla, posicion::analitica, "0");
        tablas.AnadirRegistro(tabla);
        if (tablas.gEstado != motor::estado::bien) {
            throw std::runtime_error("no se ha podido grabar la cuenta " + cuenta.cuenta);
        }
    }
}

}  // namespace tarvoline::data
