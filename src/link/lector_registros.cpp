#include "link/lector_registros.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "core/texto.h"

namespace tarvoline::link {

namespace {

namespace estado = motor::estado;

constexpr std::int32_t bytesTramo = 1 << 14;
constexpr int costeTramo = 4;  // in calls for a record
constexpr int ahorroMayor = 64 * costeTramo;

// Entries of one run of a walk.
constexpr std::size_t mayorTanda = 127;

constexpr char finDeTexto = '\0';
constexpr char barraEnClave = 31;  // stands for "\" in key texts

}  // namespace

std::string_view sinRelleno(std::string_view bytes) {
    bytes = bytes.substr(0, bytes.find(finDeTexto));
    return bytes.substr(0, bytes.find_last_not_of(' ') + 1);
}

// The codes from 160 on are those of Unicode: two bytes each.
void anadirUtf8(std::string_view bytesAnsi, std::string& destino) {
    constexpr unsigned char primeraAjena = 0x80, primeraComun = 0xA0;
    while (!bytesAnsi.empty()) {
        const auto fin = std::ranges::find_if(
            bytesAnsi, [](char c) { return static_cast<unsigned char>(c) >= primeraAjena; });
        const auto llanos = static_cast<std::size_t>(fin - bytesAnsi.begin());
        destino.append(bytesAnsi.substr(0, llanos));
        bytesAnsi.remove_prefix(llanos);
        if (bytesAnsi.empty()) return;
        const auto codigo = static_cast<unsigned char>(bytesAnsi.front());
        if (codigo < primeraComun) {
            destino.append(core::aUtf8(bytesAnsi.substr(0, 1)));
        } else {
            destino.push_back(static_cast<char>(0xC0U | (codigo >> 6U)));
            destino.push_back(static_cast<char>(0x80U | (codigo & 0x3FU)));
        }
        bytesAnsi.remove_prefix(1);
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

double Fila::numero(int posicion, int columna) const {
    const data::CampoTabla& uno = definicion_->campo(definicion_->campoDePosicion(posicion) + columna);
    if (uno.forma == data::FormaCampo::doble) return data::TextoADoble(bytesDe(uno));
    std::string texto;
    data::descifrarCampo(uno, bytesDe(uno), texto);
    return data::valorDeTexto(texto);
}

LectorRegistros::LectorRegistros(data::Tablas& tablas, int tabla)
    : tablas_(tablas),
      tabla_(tabla),
      definicion_(tablas.definicion(tabla)),
      porTramo_(std::max(1, bytesTramo / definicion_.gLongitudRegistro)) {}

// The record as its run has it; empty behind the end of the file, and when the run is not worth reading.
std::string_view LectorRegistros::enTramo(std::int32_t registro) {
    const auto longitud = static_cast<std::size_t>(definicion_.gLongitudRegistro);
    const std::int32_t numero = (registro - 1) / porTramo_;
    const bool cercano = std::abs(registro - std::exchange(anterior_, registro)) <= porTramo_;
    Tramo& tramo = tramos_[static_cast<std::size_t>(numero) % tramosGuardados];
    const bool guardado = tramo.numero == numero;
    if (guardado || cercano) ahorro_ = std::min(ahorro_ + 1, ahorroMayor);
    if (!guardado) {
        if (ahorro_ <= 0) return {};
        ahorro_ -= costeTramo;
        tramo.numero = -1;
        tramo.bytes.resize(static_cast<std::size_t>(porTramo_) * longitud);
        tablas_.leerRegistros(tabla_, numero * porTramo_ + 1, tramo.bytes);
        tramo.numero = numero;
    }
    const std::size_t lugar = static_cast<std::size_t>((registro - 1) % porTramo_) * longitud;
    return lugar < tramo.bytes.size() ? std::string_view(tramo.bytes).substr(lugar, longitud)
                                      : std::string_view();
}

std::string_view LectorRegistros::solo(std::int32_t registro) {
    suelto_.resize(static_cast<std::size_t>(definicion_.gLongitudRegistro));
    tablas_.leerRegistros(tabla_, registro, suelto_);
    return suelto_;
}

std::optional<Fila> LectorRegistros::leer(std::int32_t registro) {
    using data::EstadoRegistro;
    const auto estadoDe = [](std::string_view bytes) {
        return bytes.empty() ? EstadoRegistro::sinEscribir : data::estadoDeRegistro(bytes);
    };
    std::string_view bytes = enTramo(registro);
    EstadoRegistro hay = estadoDe(bytes);
    if (hay == EstadoRegistro::sinEscribir) {
        bytes = solo(registro);
        hay = estadoDe(bytes);
    }
    if (hay != EstadoRegistro::vivo) return std::nullopt;
    return Fila(definicion_, bytes);
}

RecorridoClave::RecorridoClave(data::Tablas& tablas, int tabla, int clave, Sentido sentido)
    : tablas_(tablas),
      numeroTabla_(tabla),
      clave_(std::to_string(clave)),
      tabla_(std::to_string(tabla)),
      sentido_(sentido),
      paso_((sentido == Sentido::adelante ? "N\\" : "P\\") + tabla_),
      lector_(tablas, tabla) {}

void RecorridoClave::desdeExtremo() {
    empezar(tablas_.orden((sentido_ == Sentido::adelante ? "F\\" : "L\\") + clave_ + "\\" + tabla_));
}

// A search that does not find its text stands on the entry before it; but before the first one, on that.
void RecorridoClave::desde(std::string texto) {
    std::ranges::replace(texto, '\\', barraEnClave);
    const bool adelante = sentido_ == Sentido::adelante;
    switch (const auto hallado = tablas_.orden("S\\" + clave_ + "\\" + tabla_ + "\\" + texto)) {
        case estado::entre:
        case estado::despues:
            empezar(adelante ? tablas_.orden(paso_) : estado::bien);
            break;
        case estado::antes:
            empezar(adelante ? estado::bien : estado::noHay);
            break;
        default:
            empezar(hallado);
            break;
    }
}

void RecorridoClave::avanzar() {
    fila_.reset();
    if (tomarEntrada()) tomarFila();
}

// `respuesta`: of the command that has moved the table to the first entry.
void RecorridoClave::empezar(std::int16_t respuesta) {
    fila_.reset();
    entradas_.clear();
    lugar_ = 0;
    if (respuesta != estado::bien) return;
    registro_ = tablas_.gRegistro;
    tomarFila();
}

bool RecorridoClave::tomarEntrada() {
    if (sentido_ == Sentido::atras) {
        if (tablas_.orden(paso_) != estado::bien) return false;
        registro_ = tablas_.gRegistro;
        return true;
    }
    if (lugar_ == entradas_.size()) {
        entradas_.resize(std::min(2 * entradas_.size() + 1, mayorTanda));
        entradas_.resize(tablas_.siguientes(numeroTabla_, entradas_));
        lugar_ = 0;
        if (entradas_.empty()) return false;
    }
    registro_ = entradas_[lugar_++];
    return true;
}

// The row of the entry, or of the first one behind it that has one.
void RecorridoClave::tomarFila() {
    do {
        fila_ = lector_.leer(registro_);
    } while (!fila_ && tomarEntrada());
}

}  // namespace tarvoline::link
