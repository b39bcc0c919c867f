#include "data/seccion_textos.h"

#include <algorithm>
#include <set>
#include <vector>

#include "data/acceso_archivo.h"
#include "data/utilidades.h"

namespace tarvoline::data {

namespace {

constexpr char finSeccion = 26;
constexpr std::string_view finLinea = "\r\n";

// What would break the form of a line cannot be part of one.
std::string enUnaLinea(std::string_view utf8) {
    auto bytes = core::aAnsi(utf8).bytes();
    std::ranges::replace_if(
        bytes, [](char c) { return c == '\r' || c == '\n' || c == finSeccion; }, ' ');
    return bytes;
}

std::string nombreDeLinea(std::string_view nombre) {
    return MayusculasAnsi(core::Recortar(enUnaLinea(nombre)));
}

// The bytes in use: what lies behind the end mark is filling.
std::string_view parteViva(const core::TextoAnsi& seccion) {
    return std::string_view(seccion.bytes()).substr(0, seccion.bytes().find(finSeccion));
}

std::string leerSeccion(platform::Archivo& archivo) {
    const auto longitud = archivo.longitud();
    if (longitud <= desplazamientoTextos) return {};
    std::string bytes(longitud - desplazamientoTextos, '\0');
    bytes.resize(archivo.leer(desplazamientoTextos, std::as_writable_bytes(std::span(bytes))));
    return bytes;
}

// Puts "nombre=valor" in the place of the first line that begins with the name, or behind the last.
void sustituirLinea(std::vector<std::string>& lineas, const std::string& nombre, const std::string& valor) {
    const auto linea = nombre + "=" + valor;
    const auto lugar = std::ranges::find_if(
        lineas, [&](const std::string& una) { return MayusculasAnsi(una).starts_with(nombre); });
    if (lugar == lineas.end()) {
        lineas.push_back(linea);
    } else {
        *lugar = linea;
    }
}

// The lines that stay: with a value, and the first of their name.
std::string componer(const std::vector<std::string>& lineas) {
    std::string texto;
    std::set<std::string> vistos;
    for (const auto& linea : lineas) {
        const auto igual = linea.find('=');
        if (igual == std::string::npos) continue;
        const bool primera = vistos.insert(MayusculasAnsi(core::Recortar(linea.substr(0, igual)))).second;
        if (!primera || core::Recortar(linea.substr(igual + 1)).empty()) continue;
        texto += core::Recortar(linea);
        texto += finLinea;
    }
    return texto + finSeccion;
}

// One write from the first byte that changes: blanks up to the section when the file is shorter, the section,
// zero bytes over the rest of an older, longer one.
void grabarSeccion(platform::Archivo& archivo, std::string seccion) {
    const auto longitud = archivo.longitud();
    if (longitud < desplazamientoTextos) {
        seccion.insert(0, desplazamientoTextos - longitud, ' ');
        archivo.escribir(longitud, platform::comoBytes(seccion));
        return;
    }
    seccion.resize(std::max<std::size_t>(seccion.size(), longitud - desplazamientoTextos), '\0');
    archivo.escribir(desplazamientoTextos, platform::comoBytes(seccion));
}

}  // namespace

core::TextoAnsi buscarEnSeccion(const core::TextoAnsi& seccion, std::string_view nombre) {
    const auto viva = parteViva(seccion);
    const auto buscado = nombreDeLinea(nombre) + "=";
    const auto lugar = MayusculasAnsi(viva).find(buscado);
    if (lugar == std::string::npos) return {};
    const auto valor = viva.substr(lugar + buscado.size());
    return core::TextoAnsi(std::string(valor.substr(0, valor.find(finLinea))));
}

core::TextoAnsi ponerEnSeccion(const core::TextoAnsi& seccion, std::string_view nombre,
                               std::string_view valor) {
    auto lineas = core::Partir(parteViva(seccion), finLinea);
    sustituirLinea(lineas, nombreDeLinea(nombre), core::Recortar(enUnaLinea(valor)));
    return core::TextoAnsi(componer(lineas));
}

std::string SeccionTextos::GET_TOTAL(std::string_view nombre, std::string_view archivo) {
    const std::string ruta(archivo.empty() ? capa_.enVigor.gArchivoEmpresa : archivo);
    std::string valor;
    leerEmpresa(capa_, ruta, [&](platform::Archivo& abierto) {
        valor = core::aUtf8(buscarEnSeccion(core::TextoAnsi(leerSeccion(abierto)), nombre));
    });
    return valor;
}

void SeccionTextos::PUT_TOTAL(std::string_view nombre, std::string_view valor, std::string_view archivo) {
    if (core::Recortar(nombre).empty()) return;  // every line begins with the empty name
    const std::string ruta(archivo.empty() ? capa_.enVigor.gArchivoEmpresa : archivo);
    cambiarEmpresa(capa_, ruta, [&](platform::Archivo& abierto) {
        const core::TextoAnsi seccion(leerSeccion(abierto));
        grabarSeccion(abierto, ponerEnSeccion(seccion, nombre, valor).bytes());
    });
}

}  // namespace tarvoline::data
