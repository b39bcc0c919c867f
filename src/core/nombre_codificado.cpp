// The escaping of file names (credencial.h): numeric character references, so that a name passes through any
// XML as plain ASCII.
#include <charconv>

#include "core/credencial.h"
#include "core/utf8.h"

namespace tarvoline::core {
namespace {

void anadirReferencia(std::string& destino, std::uint32_t codigo) {
    destino.append("&#").append(std::to_string(codigo)) += ';';
}

bool esCaracter(std::uint32_t codigo) {
    return codigo > 0 && codigo <= 0x10FFFF && (codigo < 0xD800 || codigo > 0xDFFF);
}

// The reference that `texto` starts with; `longitud` 0 when it starts with none.
struct Referencia {
    std::uint32_t codigo = 0;
    std::size_t longitud = 0;
};

Referencia leerReferencia(std::string_view texto) {
    if (texto.substr(0, 2) != "&#") {
        return {};
    }
    Referencia referencia;
    const char* final = texto.data() + texto.size();
    const auto leido = std::from_chars(texto.data() + 2, final, referencia.codigo);
    if (leido.ec != std::errc() || leido.ptr == final || *leido.ptr != ';' ||
        !esCaracter(referencia.codigo)) {
        return {};
    }
    referencia.longitud = static_cast<std::size_t>(leido.ptr - texto.data()) + 1;
    return referencia;
}

}  // namespace

std::string CodificarNombre(std::string_view nombre) {
    constexpr unsigned char primeroEscapado = 127;
    std::string codificado;
    codificado.reserve(nombre.size());
    for (std::size_t i = 0; i < nombre.size();) {
        const LetraUtf8 letra = leerLetra(nombre, i);
        i += letra.longitud;
        const auto ansi = codigoAnsi(letra.codigo);
        if (letra.codigo == '&') {
            anadirReferencia(codificado, '&');
        } else if (!letra.valida) {
            anadirReferencia(codificado, letra.codigo);  // a byte that is no UTF-8 is Windows-1252 already
        } else if (ansi && *ansi < primeroEscapado) {
            codificado += static_cast<char>(*ansi);
        } else {
            anadirReferencia(codificado, ansi ? *ansi : static_cast<std::uint32_t>(letra.codigo));
        }
    }
    return codificado;
}

std::string DecodificarNombre(std::string_view nombre) {
    std::string texto;
    texto.reserve(nombre.size());
    for (std::size_t i = 0; i < nombre.size();) {
        const Referencia referencia = leerReferencia(nombre.substr(i));
        if (referencia.longitud == 0) {
            texto += nombre[i++];
            continue;
        }
        i += referencia.longitud;
        const bool deLaPagina = referencia.codigo <= 0xFF;
        anadirLetra(texto, deLaPagina ? deCodigoAnsi(static_cast<unsigned char>(referencia.codigo))
                                      : static_cast<char32_t>(referencia.codigo));
    }
    return texto;
}

}  // namespace tarvoline::core
