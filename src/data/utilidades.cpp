#include "data/utilidades.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/xml_comun.h"

namespace tarvoline::data {

namespace {

constexpr unsigned char sinPareja = 255;  // the one code that the masking cannot reach

unsigned char cambiarPareja(unsigned char codigo) {
    return static_cast<unsigned char>(codigo < 128 ? codigo + 127 : codigo - 127);
}

unsigned char mayusculaAnsi(unsigned char c) {
    if (c >= 'a' && c <= 'z') return static_cast<unsigned char>(c - 0x20);
    if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return static_cast<unsigned char>(c - 0x20);
    switch (c) {
        case 0x9A:
        case 0x9C:
        case 0x9E:
            return static_cast<unsigned char>(c - 0x10);
        case 0xFF:
            return 0x9F;
        default:
            return c;
    }
}

// The code that stands for a character in an escape: its Windows-1252 byte, or its Unicode number where the
// code page has no place for it.
char32_t codigoEscape(char32_t caracter) {
    if (caracter < 0x80) return caracter;
    const auto ansi = core::aAnsi(core::deCodigos(std::u32string_view(&caracter, 1)));
    const bool tienePlaza = ansi.longitud() == 1 && ansi.bytes()[0] != '?';
    return tienePlaza ? static_cast<unsigned char>(ansi.bytes()[0]) : caracter;
}

}  // namespace

double Redondear(double valor, int decimales) {
    const double potencia = std::pow(10.0, decimales);
    const double redondo = std::floor(std::fabs(valor) * potencia + 0.5) / potencia;
    return valor < 0 ? -redondo : redondo;
}

double Redondear(const CapaDatos& capa, double valor) {
    const auto& monedas = capa.monedas;
    return Redondear(valor, monedas.cargadas ? monedas.DecimalesMonedas.front() : capa.gDecimalesMoneda);
}

std::string NombrePropio(std::string_view texto) {
    std::string resultado;
    bool comienzo = true;
    for (const char32_t letra : core::codigos(core::Minusculas(texto))) {
        const auto suelta = core::deCodigos(std::u32string_view(&letra, 1));
        resultado += comienzo ? core::Mayusculas(suelta) : suelta;
        comienzo = letra == U' ';
    }
    return resultado;
}

std::string DesenmascararClave(const core::TextoAnsi& guardada) {
    const auto& bytes = guardada.bytes();
    if (bytes.empty() || bytes[0] == '\0' || bytes.find_first_not_of(' ') == std::string::npos) return {};
    std::string clave;
    for (const char c : bytes.substr(0, 4)) {
        if (c != '\0') clave += static_cast<char>(cambiarPareja(static_cast<unsigned char>(c)));
    }
    return core::aUtf8(clave);
}

core::TextoAnsi EnmascararClave(std::string_view clave) {
    const auto llana = core::aAnsi(clave);
    if (llana.longitud() > 4)
        throw std::invalid_argument("la clave de una empresa tiene cuatro caracteres como mucho");
    if (llana.longitud() == 0) return core::TextoAnsi("    ");
    std::string guardada;
    for (const char c : llana.bytes()) {
        const auto codigo = static_cast<unsigned char>(c);
        if (codigo == 0 || codigo == sinPareja) {
            throw std::invalid_argument("la clave tiene un carácter que no se puede guardar");
        }
        guardada += static_cast<char>(cambiarPareja(codigo));
    }
    guardada.resize(4, '\0');
    return core::TextoAnsi(std::move(guardada));
}

std::string EscaparXml(std::string_view texto) {
    std::string resultado;
    for (const char32_t c : core::codigos(texto)) {
        if (c == U'&' || c == U'<' || c == U'>' || c > 126) {
            resultado += "&#" + std::to_string(static_cast<std::uint32_t>(codigoEscape(c))) + ";";
        } else {
            resultado += static_cast<char>(c);
        }
    }
    return resultado;
}

std::vector<std::string> ListaDeXml(const CapaDatos& capa, std::string_view utf8) {
    try {
        return core::LeerListaXML(utf8);
    } catch (const core::ErrorXml& error) {
        capa.mostrar({error.what(), core::Icono::ninguno, "Veldorix"});
        return {};
    }
}

std::string NombreCorto(std::string_view ruta) {
    return std::string(ruta.substr(0, ruta.find_last_not_of('\0') + 1));
}

void GrabarAjuste(CapaDatos& capa, std::string_view clave, std::string_view valor, std::string_view seccion,
                  std::string_view producto) {
    try {
        capa.ajustes.GrabarRegistro(clave, valor, seccion, producto);
    } catch (const platform::ErrorAjustes&) {
        capa.mostrar({std::string(core::avisoSinGrabar), core::Icono::ninguno, {}});
    }
}

std::vector<std::string> PartirLinea(std::string_view linea, char separador) {
    std::vector<std::string> campos(1);
    bool entreComillas = false;
    for (const char c : linea) {
        if (c == '\n') continue;
        if (c == '"') {
            entreComillas = !entreComillas;
        } else if (c == separador && !entreComillas) {
            campos.emplace_back();
        } else {
            campos.back() += c;
        }
    }
    std::ranges::transform(campos, campos.begin(),
                           [](const std::string& campo) { return core::Recortar(campo); });
    return campos;
}

Tabla TextoATabla(std::string_view texto, std::string_view separador) {
    Tabla tabla;
    std::size_t columnas = 1;
    for (const auto& linea : core::Partir(core::Sustituir(texto, "\r\n", "\r"), "\r")) {
        tabla.push_back(separador == "," ? PartirLinea(linea) : core::Partir(linea, separador));
        columnas = std::max(columnas, tabla.back().size());
    }
    for (auto& fila : tabla) {
        fila.resize(columnas);
    }
    return tabla;
}

core::TextoAnsi MayusculasAnsi(const core::TextoAnsi& texto) {
    return core::TextoAnsi(MayusculasAnsi(std::string_view(texto.bytes())));
}

std::string MayusculasAnsi(std::string_view bytesAnsi) {
    std::string resultado(bytesAnsi);
    std::ranges::transform(resultado, resultado.begin(), [](char c) {
        return static_cast<char>(mayusculaAnsi(static_cast<unsigned char>(c)));
    });
    return resultado;
}

}  // namespace tarvoline::data
