#include "link/remoto/formas.h"

#include <algorithm>

#include "core/texto.h"
#include "data/utilidades.h"

namespace tarvoline::link::remoto {

namespace {

constexpr std::string_view cabecera = "<?xml version=\"1.0\" standalone=\"yes\" ?>\r\n";
constexpr std::string_view finLinea = "\r\n";
constexpr std::string_view sinCambio = "-1";
// Stands for a colon of a value until the item has been split.
constexpr char dosPuntosGuardado = '\x1f';
constexpr std::string_view referenciaDosPuntos = "&#58;";

std::string abierta(std::string_view nombre) {
    return "<" + std::string(nombre) + ">";
}

std::string cerrada(std::string_view nombre) {
    return "</" + std::string(nombre) + ">";
}

// `contenido` is XML already.
std::string elemento(std::string_view nombre, std::string_view contenido) {
    return abierta(nombre) + std::string(contenido) + cerrada(nombre);
}

std::string lineaDe(std::string_view nombre, const std::string& valor) {
    if (valor.empty()) return {};
    return elemento(nombre, data::EscaparXml(valor)) + std::string(finLinea);
}

std::string campoDe(const std::string& item) {
    const std::size_t igual = item.find('='), puntos = item.find(':');
    const char separador = puntos != std::string::npos && puntos < igual ? ':' : '=';
    const std::string escapado = data::EscaparXml(item);
    const auto partes = core::Partir(escapado, std::string(1, separador));
    const std::string valor = partes.size() > 1 ? partes[1] : std::string();
    return elemento(partes[0],
                    core::Sustituir(valor, std::string(1, dosPuntosGuardado), referenciaDosPuntos)) +
           std::string(finLinea);
}

std::string valorDeCampo(std::string_view valor) {
    std::string limpio(valor);
    std::ranges::replace(limpio, '=', '-');
    std::ranges::replace_if(
        limpio, [](unsigned char c) { return c < ' '; }, ' ');
    return limpio;
}

}  // namespace

std::string formaSimple(const Remite& remite, std::string_view operacion, std::string_view texto,
                        std::string_view valor) {
    return std::string(cabecera) + abierta(operacion) + data::EscaparXml(texto) +
           elemento("ID", data::EscaparXml(remite.token)) + lineaDe("CARPETA", remite.carpeta) +
           lineaDe("EMPRESA", remite.empresa) + lineaDe("VALOR", std::string(valor)) + cerrada(operacion);
}

std::string formaCampos(const Remite& remite, std::string_view operacion,
                        const std::vector<std::string>& elementos) {
    std::string forma = std::string(cabecera) + abierta(operacion) + std::string(finLinea) +
                        elemento("ID", data::EscaparXml(remite.token)) + std::string(finLinea) +
                        lineaDe("CARPETA", remite.carpeta) + lineaDe("EMPRESA", remite.empresa);
    for (const auto& uno : elementos) {
        if (!uno.empty()) forma += campoDe(uno);
    }
    return forma + cerrada(operacion);
}

std::string elementoEntero(std::string_view nombre, std::string_view valor) {
    std::string guardado(valor);
    std::erase(guardado, dosPuntosGuardado);
    std::ranges::replace(guardado, ':', dosPuntosGuardado);
    return std::string(nombre) + ":" + guardado;
}

std::string cambioDeCampo(int posicion, std::string_view valor) {
    if (valor == sinCambio) return {};
    return std::to_string(posicion) + "=" + valorDeCampo(valor) + "\t";
}

std::string cambioDeCampo(int posicion, int longitud, std::string_view valor) {
    if (valor == sinCambio) return {};
    return std::to_string(posicion) + "+" + std::to_string(longitud) + "=" + valorDeCampo(valor) + "\t";
}

}  // namespace tarvoline::link::remoto
