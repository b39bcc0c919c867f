#include "link/texto_extracto.h"

#include <algorithm>

#include "data/codec.h"
#include "data/utilidades.h"
#include "link/fechas_enlace.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace {

constexpr char separador = '\t';
constexpr std::string_view celdaVacia = "0\t";  // of the other side
constexpr std::string_view finDeLinea = "\r\n";
constexpr std::string_view debe = "1";

// Also the other control codes, which no text has.
bool parteCeldas(char c) {
    return c >= 0 && c < ' ';
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
    if (!alDebe) texto_ += celdaVacia;
    celdaNumero(importe);
    if (alDebe) texto_ += celdaVacia;
    celdaNumero(saldo_);
    for (const int posicion : {extra::punteo, extra::diario, extra::canal, extra::referencia})
        celda(fila.ansi(posicion));
    texto_.pop_back();
    texto_ += finDeLinea;
}

void TextoExtracto::celda(std::string_view bytesAnsi) {
    if (std::ranges::any_of(bytesAnsi, parteCeldas)) {
        std::string limpio(bytesAnsi);
        std::ranges::replace_if(limpio, parteCeldas, ' ');
        anadirUtf8(limpio, texto_);
    } else {
        anadirUtf8(bytesAnsi, texto_);
    }
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
