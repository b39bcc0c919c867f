#include "link/lector_registros.h"

#include <algorithm>

#include "core/texto.h"

namespace tarvoline::link {

namespace {

namespace estado = motor::estado;

// Records with no more than these between them are read in one go: cheaper than a call each.
constexpr std::int32_t cerca = 16;
constexpr std::int32_t tramoPrimero = 8;
constexpr std::int32_t bytesTramo = 1 << 16;

constexpr char finDeTexto = '\0';
constexpr char barraEnClave = 31;  // stands for "\" in key texts

}  // namespace

std::string_view sinRelleno(std::string_view bytes) {
    bytes = bytes.substr(0, bytes.find(finDeTexto));
    return bytes.substr(0, bytes.find_last_not_of(' ') + 1);
}

void anadirUtf8(std::string_view bytesAnsi, std::string& destino) {
    const bool ascii =
        std::ranges::none_of(bytesAnsi, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    if (ascii) {
        destino.append(bytesAnsi);
    } else {
        destino.append(core::aUtf8(bytesAnsi));
    }
}

std::string Fila::texto(int posicion) const {
    std::string texto;
    const data::CampoTabla& uno = campo(posicion);
    const bool esTexto = uno.forma == data::FormaCampo::texto || uno.forma == data::FormaCampo::fecha;
    if (esTexto) {
        anadirUtf8(sinRelleno(bytesDe(uno)), texto);
    } else {
        data::descifrarCampo(uno, bytesDe(uno), texto);
    }
    return texto;
}

double Fila::numero(int posicion) const {
    const data::CampoTabla& uno = campo(posicion);
    if (uno.forma == data::FormaCampo::doble) return data::TextoADoble(bytesDe(uno));
    return data::valorDeTexto(texto(posicion));
}

// What the block has of it; empty when it does not have it.
std::string_view LectorRegistros::enBloque(std::int32_t registro) const {
    const auto longitud = static_cast<std::size_t>(definicion_.gLongitudRegistro);
    if (registro < desde_) return {};
    const std::size_t lugar = static_cast<std::size_t>(registro - desde_) * longitud;
    return lugar < bloque_.size() ? std::string_view(bloque_).substr(lugar, longitud) : std::string_view();
}

void LectorRegistros::cargar(std::int32_t desde, std::int32_t cuantos) {
    bloque_.resize(static_cast<std::size_t>(cuantos) *
                   static_cast<std::size_t>(definicion_.gLongitudRegistro));
    desde_ = desde;
    tablas_.leerRegistros(tabla_, desde, bloque_);
}

std::optional<Fila> LectorRegistros::leer(std::int32_t registro) {
    const bool ordenados = registro > ultimo_ && registro - ultimo_ <= cerca;
    ultimo_ = registro;
    std::string_view bytes = enBloque(registro);
    if (bytes.empty()) {
        const std::int32_t mayor = std::max(tramoPrimero, bytesTramo / definicion_.gLongitudRegistro);
        tramo_ = ordenados ? std::clamp(tramo_ * 2, tramoPrimero, mayor) : 1;
        cargar(registro, tramo_);
        bytes = enBloque(registro);
    } else if (data::estadoDeRegistro(bytes) == data::EstadoRegistro::sinEscribir) {
        cargar(registro, 1);
        bytes = enBloque(registro);
    }
    if (bytes.empty() || data::estadoDeRegistro(bytes) != data::EstadoRegistro::vivo) return std::nullopt;
    return Fila(definicion_, bytes);
}

RecorridoClave::RecorridoClave(data::Tablas& tablas, int tabla, int clave, Sentido sentido)
    : tablas_(tablas),
      clave_(std::to_string(clave)),
      tabla_(std::to_string(tabla)),
      sentido_(sentido),
      paso_((sentido == Sentido::adelante ? "N\\" : "P\\") + tabla_),
      lector_(tablas, tabla) {}

void RecorridoClave::desdeExtremo() {
    tablas_.orden((sentido_ == Sentido::adelante ? "F\\" : "L\\") + clave_ + "\\" + tabla_);
    tomarFila();
}

// A search that does not find its text stands on the entry before it; but for the ends, where it stands on
// the one that there is.
void RecorridoClave::desde(std::string texto) {
    std::ranges::replace(texto, '\\', barraEnClave);
    const bool adelante = sentido_ == Sentido::adelante;
    switch (tablas_.orden("S\\" + clave_ + "\\" + tabla_ + "\\" + texto)) {
        case estado::entre:
        case estado::despues:
            if (adelante) {
                tablas_.orden(paso_);
            } else {
                tablas_.gEstado = estado::bien;
            }
            break;
        case estado::antes:
            tablas_.gEstado = adelante ? estado::bien : estado::noHay;
            break;
        default:
            break;
    }
    tomarFila();
}

void RecorridoClave::avanzar() {
    tablas_.orden(paso_);
    tomarFila();
}

void RecorridoClave::tomarFila() {
    for (fila_.reset(); tablas_.gEstado == estado::bien; tablas_.orden(paso_)) {
        fila_ = lector_.leer(tablas_.gRegistro);
        if (fila_) return;
    }
}

}  // namespace tarvoline::link
