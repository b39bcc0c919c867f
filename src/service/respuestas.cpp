#include "service/respuestas.h"

#include <cmath>
#include <limits>
#include <stdexcept>

#include "core/texto.h"

namespace tarvoline::service {

namespace {

std::string campo(const std::vector<std::string>& campos, std::size_t indice) {
    return indice < campos.size() ? campos[indice] : std::string();
}

std::vector<std::string> registros(std::string_view resultado) {
    return resultado.empty() ? std::vector<std::string>() : core::Partir(resultado, "|");
}

}  // namespace

std::string codigoDeDatosUsuario(std::string_view resultado) {
    for (const auto& registro : registros(resultado)) {
        auto codigo = core::Recortar(campo(core::Partir(registro, "-"), 2));
        if (!codigo.empty()) {
            return codigo;
        }
    }
    return {};
}

std::vector<UsuarioCuenta> leerUsuariosCuenta(std::string_view resultado) {
    std::vector<UsuarioCuenta> usuarios;
    for (const auto& registro : registros(resultado)) {
        if (core::Recortar(registro).empty()) {
            continue;
        }
        const auto campos = core::Partir(registro, "-");
        usuarios.push_back({core::Recortar(campo(campos, 1)), campo(campos, 2), campo(campos, 3)});
    }
    return usuarios;
}

std::vector<EntradaHistorico> leerHistorico(std::string_view resultado) {
    std::vector<EntradaHistorico> entradas;
    for (const auto& registro : registros(resultado)) {
        if (core::Recortar(registro).empty()) {
            entradas.emplace_back();
            continue;
        }
        const auto campos = core::Partir(registro, "@/");
        entradas.push_back({campo(campos, 1), campo(campos, 2), campo(campos, 3)});
    }
    return entradas;
}

std::vector<std::string> leerNombres(std::string_view resultado) {
    auto nombres = core::Partir(resultado, "\t");
    std::erase_if(nombres, [](const std::string& nombre) { return nombre.empty(); });
    return nombres;
}

std::int32_t leerTamano(std::string_view resultado) {
    const double bytes = core::Val(resultado);
    if (bytes < 0 || bytes > std::numeric_limits<std::int32_t>::max()) {
        throw std::overflow_error("Desbordamiento: " + std::string(resultado) + " bytes");
    }
    return static_cast<std::int32_t>(std::nearbyint(bytes));
}

}  // namespace tarvoline::service
