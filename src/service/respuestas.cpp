#include "service/respuestas.h"

#include <charconv>
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
    const auto cifras = core::Recortar(resultado);
    std::int32_t bytes = 0;
    const auto [fin, error] = std::from_chars(cifras.data(), cifras.data() + cifras.size(), bytes);
    if (error == std::errc::result_out_of_range) {
        throw std::overflow_error("Desbordamiento: " + cifras + " bytes");
    }
    if (error != std::errc() || fin != cifras.data() + cifras.size() || bytes < 0) {
        throw std::invalid_argument("El servicio no da un tamaño: \"" + core::Mid(cifras, 1, 64) + "\"");
    }
    return bytes;
}

}  // namespace tarvoline::service
