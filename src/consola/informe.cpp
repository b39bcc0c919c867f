#include "consola/informe.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

#include "core/texto.h"

namespace tarvoline::consola {

namespace {

using Json = nlohmann::ordered_json;

Json valorJson(const Dato& dato, const std::string& valor) {
    if (!dato.numero) {
        return valor;
    }
    const double numero = core::Val(valor);
    const auto entero = static_cast<long long>(numero);
    return static_cast<double>(entero) == numero ? Json(entero) : Json(numero);
}

Json componer(const Informe& informe) {
    Json objeto{{"codigo", informe.codigo}, {"motivo", informe.motivo}};
    for (const auto& dato : informe.datos) {
        objeto[dato.clave] = valorJson(dato, dato.valor);
    }
    for (const auto& lista : informe.listas) {
        objeto[lista.clave] = lista.valores;
    }
    for (const auto& tabla : informe.tablas) {
        auto filas = Json::array();
        for (const auto& fila : tabla.filas) {
            Json una = Json::object();
            for (std::size_t i = 0; i < tabla.columnas.size(); ++i) {
                una[tabla.columnas[i].clave] = valorJson(tabla.columnas[i], fila[i]);
            }
            filas.push_back(std::move(una));
        }
        objeto[tabla.clave] = std::move(filas);
    }
    return objeto;
}

Tabla limpia(Tabla tabla) {
    for (auto& fila : tabla.filas) {
        std::ranges::transform(fila, fila.begin(), paraTerminal);
    }
    return tabla;
}

void escribirTabla(std::ostream& salida, const Tabla& tabla) {
    std::vector<std::size_t> anchos;
    for (std::size_t c = 0; c < tabla.columnas.size(); ++c) {
        auto ancho = core::longitudTexto(tabla.columnas[c].etiqueta);
        for (const auto& fila : tabla.filas) {
            ancho = std::max(ancho, core::longitudTexto(fila[c]));
        }
        anchos.push_back(ancho);
    }
    const auto escribirFila = [&](const auto& celda) {
        std::string linea;
        for (std::size_t c = 0; c < anchos.size(); ++c) {
            const std::string& texto = celda(c);
            const std::string relleno(anchos[c] - core::longitudTexto(texto), ' ');
            linea += (c > 0 ? "  " : "") + (tabla.columnas[c].numero ? relleno + texto : texto + relleno);
        }
        salida << linea.substr(0, linea.find_last_not_of(' ') + 1) << '\n';
    };
    escribirFila([&](std::size_t c) -> const std::string& { return tabla.columnas[c].etiqueta; });
    for (const auto& fila : tabla.filas) {
        escribirFila([&](std::size_t c) -> const std::string& { return fila[c]; });
    }
}

}  // namespace

std::string paraTerminal(std::string_view texto) {
    std::string limpio;
    limpio.reserve(texto.size());
    for (std::size_t i = 0; i < texto.size(); ++i) {
        const auto byte = static_cast<unsigned char>(texto[i]);
        const bool sigueC1 = byte == 0xc2 && i + 1 < texto.size() &&
                             static_cast<unsigned char>(texto[i + 1]) < 0xa0;  // U+0080 to U+009F
        limpio += byte < 0x20 || byte == 0x7f || sigueC1 ? '?' : texto[i];
        i += sigueC1 ? 1U : 0U;
    }
    return limpio;
}

void escribir(std::ostream& salida, const Informe& informe, bool json) {
    if (json) {
        salida << componer(informe).dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
        return;
    }
    for (const auto& tabla : informe.tablas) {
        escribirTabla(salida, limpia(tabla));
    }
    for (const auto& lista : informe.listas) {
        for (const auto& valor : lista.valores) {
            salida << lista.etiqueta << ' ' << paraTerminal(valor) << '\n';
        }
    }
    for (const auto& dato : informe.datos) {
        salida << dato.etiqueta << (dato.etiqueta.empty() ? "" : " ") << paraTerminal(dato.valor) << '\n';
    }
}

}  // namespace tarvoline::consola
