#include "compilador.h"

#include <algorithm>
#include <charconv>

#include "core/idioma.h"
#include "core/texto.h"

namespace tarvoline::idioma {

namespace {

constexpr std::string_view finLinea = "\r\n";

[[noreturn]] void rechazar(std::string_view nombre, int linea, const std::string& motivo) {
    std::string donde(nombre);
    if (linea > 0) {
        donde += ":" + std::to_string(linea);
    }
    throw ErrorFuente(donde + ": " + motivo);
}

// Every character has a place in the code page and is none of its controls.
bool cabeEnPagina(const std::string& texto) {
    const auto control = [](char32_t codigo) { return codigo < 0x20 || (codigo >= 0x7f && codigo < 0xa0); };
    return core::aUtf8(core::aAnsi(texto)) == texto && !std::ranges::any_of(core::codigos(texto), control);
}

std::string sinComillas(std::string_view nombre, int linea, std::string_view texto) {
    if (texto.size() >= 2 && texto.front() == '"' && texto.back() == '"') {
        return std::string(texto.substr(1, texto.size() - 2));
    }
    if (texto.empty() || texto.front() == ' ' || texto.back() == ' ') {
        rechazar(nombre, linea, "a text that is empty or has blanks at its ends wants double quotes");
    }
    return std::string(texto);
}

std::vector<std::string> lineas(std::string_view utf8) {
    auto todas = core::Partir(utf8, "\n");
    for (auto& linea : todas) {
        if (linea.ends_with('\r')) {
            linea.pop_back();
        }
    }
    return todas;
}

void leerLinea(std::string_view nombre, int linea, std::string_view contenido, Tabla& tabla) {
    const auto tabulador = contenido.find('\t');
    int numero = 0;
    const char* fin = contenido.data() + std::min(tabulador, contenido.size());
    const auto [parada, error] = std::from_chars(contenido.data(), fin, numero);
    if (tabulador == std::string_view::npos || error != std::errc{} || parada != fin) {
        rechazar(nombre, linea, "not of the form number, tab, text");
    }
    if (numero < 1 || numero > core::numeroTextoMayor) {
        rechazar(nombre, linea, "the number is outside 1.." + std::to_string(core::numeroTextoMayor));
    }
    auto texto = sinComillas(nombre, linea, contenido.substr(tabulador + 1));
    if (!cabeEnPagina(texto)) {
        rechazar(nombre, linea, "a character without a place in Windows-1252");
    }
    if (!tabla.emplace(numero, std::move(texto)).second) {
        rechazar(nombre, linea, "number " + std::to_string(numero) + " is given twice");
    }
}

const std::string& textoDe(std::string_view nombre, const Tabla& tabla, int numero) {
    const auto donde = tabla.find(numero);
    if (donde == tabla.end()) {
        rechazar(nombre, 0, "number " + std::to_string(numero) + " is missing");
    }
    return donde->second;
}

void comprobarComas(std::string_view nombre, const Tabla& tabla, int numero, int comas) {
    if (std::ranges::count(textoDe(nombre, tabla, numero), ',') != comas) {
        rechazar(nombre, 0,
                 "number " + std::to_string(numero) + " wants " + std::to_string(comas + 1) +
                     " items divided by commas");
    }
}

}  // namespace

Tabla leerFuente(std::string_view nombre, std::string_view utf8) {
    Tabla tabla;
    int linea = 0;
    for (const auto& contenido : lineas(utf8)) {
        ++linea;
        if (!contenido.empty() && contenido.front() != '#') {
            leerLinea(nombre, linea, contenido, tabla);
        }
    }
    return tabla;
}

void comprobarTextos(std::string_view nombre, const Tabla& tabla) {
    for (const int numero : {core::textoFalloCopia, core::textoFallo}) {
        if (!core::esError(textoDe(nombre, tabla, numero))) {
            rechazar(nombre, 0, "number " + std::to_string(numero) + " must begin with ERROR");
        }
    }
    if (textoDe(nombre, tabla, 586).find("Veldorix") == std::string::npos) {
        rechazar(nombre, 0, "number 586 must hold the word Veldorix");
    }
    comprobarComas(nombre, tabla, 2235, 17);  // the tips of the toolbar
    comprobarComas(nombre, tabla, 2247, 2);   // the heads of the space report
    for (const int numero : {2102, 2238}) {   // tips that are parts of such a list
        comprobarComas(nombre, tabla, numero, 0);
    }
}

void comprobarPareja(std::string_view nombreUno, const Tabla& uno, std::string_view nombreOtro,
                     const Tabla& otro) {
    for (const auto& [numero, texto] : uno) {
        textoDe(nombreOtro, otro, numero);
    }
    for (const auto& [numero, texto] : otro) {
        textoDe(nombreUno, uno, numero);
    }
}

std::string componerArchivo(const Tabla& tabla) {
    std::string salida = "Tarvoline: texts of the program, one a line.";
    salida += finLinea;
    salida += '@';
    for (int numero = 1; numero <= core::numeroTextoMayor; ++numero) {
        salida += finLinea;
        if (const auto donde = tabla.find(numero); donde != tabla.end()) {
            salida += core::aAnsi(donde->second).bytes();
        }
    }
    return salida;
}

std::string componerDocumento(std::string_view nombre, std::string_view utf8) {
    std::string salida;
    int numero = 0;
    auto todas = lineas(utf8);
    if (!todas.empty() && todas.back().empty()) {
        todas.pop_back();  // what stands behind the last line end
    }
    for (const auto& linea : todas) {
        ++numero;
        if (!cabeEnPagina(linea)) {
            rechazar(nombre, numero, "a character without a place in Windows-1252");
        }
        salida += core::aAnsi(linea).bytes();
        salida += finLinea;
    }
    return salida;
}

}  // namespace tarvoline::idioma
