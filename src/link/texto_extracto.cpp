#include "link/texto_extracto.h"

#include <algorithm>

#include "data/codec.h"
#include "data/utilidades.h"
#include "link/fechas_enlace.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace {

constexpr char separador = '\t';
constexpr std::string_view finDeLinea = "\r\n";
constexpr std::string_view debe = "1";

bool parteCeldas(char c) {
    return c == '\t' || c == '\r' || c == '\n';
}

}  // namespace

TextoExtracto::TextoExtracto(const Sesion& sesion, std::string_view cuenta) : sesion_(sesion) {
    celda(cuenta);
    cuenta_.swap(texto_);
}

void TextoExtracto::anadir(const Fila& fila) {
    namespace extra = posicion::extra;
    const double importe = fila.numero(extra::importe);
    const bool alDebe = fila.ansi(extra::tipo) == debe;
    saldo_ = data::Redondear(sesion_.contexto.datos, saldo_ + importe);
    texto_ += cuenta_;
    celdaFecha(fila.bytes(extra::fecha));
    celda(fila.ansi(extra::asiento));
    celda(fila.ansi(extra::descripcion));
    celdaNumero(alDebe ? importe : 0);
    celdaNumero(alDebe ? 0 : importe);
    celdaNumero(saldo_);
    for (const int posicion : {extra::punteo, extra::diario, extra::canal, extra::referencia})
        celda(fila.ansi(posicion));
    texto_.pop_back();
    texto_ += finDeLinea;
}

void TextoExtracto::celda(std::string_view bytesAnsi) {
    const std::size_t desde = texto_.size();
    anadirUtf8(bytesAnsi, texto_);
    std::replace_if(texto_.begin() + static_cast<std::ptrdiff_t>(desde), texto_.end(), parteCeldas, ' ');
    texto_ += separador;
}

void TextoExtracto::celdaNumero(double valor) {
    data::ponerTextoDeNumero(valor, numero_);
    texto_ += numero_;
    texto_ += separador;
}

void TextoExtracto::celdaFecha(std::string_view guardada) {
    if (guardada != dia_) {
        dia_ = guardada;
        celdaDelDia_ = fechaCorta(sesion_, guardada) + separador;
    }
    texto_ += celdaDelDia_;
}

}  // namespace tarvoline::link
