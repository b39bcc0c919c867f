#include "workflows/empresa_en_disco.h"

#include <array>

#include "core/carpetas.h"
#include "core/texto.h"

namespace tarvoline::workflows {

namespace {

constexpr std::size_t inicioNumero = 5;  // of a table's name, counted from 0
constexpr std::size_t finNumero = 7;

}  // namespace

std::string numeroDeTabla(std::string_view nombre) {
    return core::longitudTexto(nombre) < finNumero ? std::string() : core::Mid(nombre, inicioNumero + 1, 2);
}

std::string conNumeroDeTabla(std::string_view nombre, std::string_view numero) {
    return core::Mid(nombre, 1, inicioNumero) + std::string(numero) + core::Mid(nombre, finNumero + 1);
}

// Another company's file may have the number in those places of its name; it is no table all the same.
bool esTablaDe(std::string_view nombre, std::string_view numero) {
    return !core::igualSinCaja(core::SepararRuta(nombre).extension, "QZT") &&
           core::igualSinCaja(numeroDeTabla(nombre), numero) && core::Mid(nombre, finNumero + 1, 1) == ".";
}

std::vector<std::string> tablasDeEmpresa(platform::SistemaArchivos& archivos, std::string_view carpeta,
                                         std::string_view numero) {
    std::vector<std::string> tablas;
    for (const auto& entrada : archivos.listar(carpeta)) {
        if (!entrada.esDirectorio && esTablaDe(entrada.nombre, numero)) {
            tablas.push_back(entrada.nombre);
        }
    }
    return tablas;
}

bool esEmpresaVXCRM(std::string_view archivoEmpresa) {
    const auto nombre = core::Mayusculas(core::SoloNombre(archivoEmpresa));
    return core::empiezaPor(nombre, "TOTAL") && core::longitudTexto(nombre) == 11 &&
           core::Mid(nombre, finNumero + 1) == ".XML";
}

std::string numeroDeEmpresa(platform::SistemaArchivos& archivos, std::string_view archivoEmpresa) {
    if (esEmpresaVXCRM(archivoEmpresa)) {
        return numeroDeTabla(core::SoloNombre(archivoEmpresa));
    }
    auto archivo =
        archivos.abrir(archivoEmpresa, platform::Apertura::lectura, platform::Comparticion::compartida);
    std::array<char, 2> bytes{' ', ' '};
    archivo->leer(0, std::as_writable_bytes(std::span(bytes)));
    return core::aUtf8(std::string_view(bytes.data(), bytes.size()));
}

}  // namespace tarvoline::workflows
