// Rows of an open table straight from its records: a field is decoded when it is asked for, and not before.
//
//     RecorridoClave lineas(tablas, data::tabla::extra, 2);
//     for (lineas.desde(cuenta); lineas.fila(); lineas.avanzar()) saldo += lineas.fila()->numero(importe);
//
// Fields are named by position; one that the table's definition does not have reads as empty.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/tablas.h"

namespace tarvoline::link {

// Windows-1252 without trailing blanks, cut at a zero byte.
std::string_view sinRelleno(std::string_view bytes);
// Appends Windows-1252 as UTF-8.
void anadirUtf8(std::string_view bytesAnsi, std::string& destino);

// A whole record; it does not outlive the next one that its reader reads.
class Fila {
  public:
    Fila(const data::DefinicionTabla& definicion, std::string_view bytes)
        : definicion_(&definicion), bytes_(bytes) {}

    std::string_view bytes(int posicion) const { return bytesDe(campo(posicion)); }
    // Windows-1252, as sinRelleno; of texts and dates alone.
    std::string_view ansi(int posicion) const { return sinRelleno(bytes(posicion)); }
    std::string texto(int posicion) const;
    // A text that is no number counts as 0.
    double numero(int posicion) const { return numero(posicion, 0); }
    // The field so many behind that of the position: columns of an account are counted so.
    double numero(int posicion, int columna) const;

  private:
    const data::CampoTabla& campo(int posicion) const {
        return definicion_->campo(definicion_->campoDePosicion(posicion));
    }
    std::string_view bytesDe(const data::CampoTabla& campo) const {
        return bytes_.substr(static_cast<std::size_t>(campo.desplazamiento),
                             static_cast<std::size_t>(campo.bytes));
    }

    const data::DefinicionTabla* definicion_;
    std::string_view bytes_;
};

// Reads runs of records, and keeps them, where those that are asked for lie near each other, be it in order
// or not. A record that nobody had written when its run was read is read again on its own; a row that others
// change meanwhile may come as it was.
class LectorRegistros {
  public:
    // `tablas` is borrowed; the table must be open as long as it is read.
    LectorRegistros(data::Tablas& tablas, int tabla);

    // Nothing for a record that is removed, or not written yet.
    std::optional<Fila> leer(std::int32_t registro);

  private:
    // Neighbouring records; each has one place among the runs that it may lie at.
    struct Tramo {
        std::int32_t numero = -1;
        std::string bytes;
    };
    static constexpr std::size_t tramosGuardados = 512;

    std::string_view enTramo(std::int32_t registro);
    std::string_view solo(std::int32_t registro);

    data::Tablas& tablas_;
    int tabla_;
    const data::DefinicionTabla& definicion_;
    std::int32_t porTramo_;
    std::array<Tramo, tramosGuardados> tramos_;
    std::string suelto_;
    std::int32_t anterior_ = 0;  // record asked for before
    int ahorro_ = 0;             // records that a run has saved, or would have, less what runs cost
};

// The rows of a table in the order of one of its keys, from a place on. Records that are not there are passed
// over. The position of the table is its own: other commands that move it spoil the walk. It asks for longer
// and longer runs of entries; what others insert into one after that is not met.
class RecorridoClave {
  public:
    enum class Sentido { adelante, atras };

    RecorridoClave(data::Tablas& tablas, int tabla, int clave, Sentido sentido = Sentido::adelante);

    // To the first row in the direction of the walk.
    void desdeExtremo();
    // To the first row whose key is `texto` (Windows-1252, blanks at its end do not matter) or lies behind it
    // in the direction of the walk.
    void desde(std::string texto);
    void avanzar();
    // The row that it stands on; null at the end.
    const Fila* fila() const { return fila_ ? &*fila_ : nullptr; }
    std::int32_t registro() const { return registro_; }

  private:
    void empezar(std::int16_t respuesta);
    bool tomarEntrada();
    void tomarFila();

    data::Tablas& tablas_;
    const int numeroTabla_;
    const std::string clave_, tabla_;
    const Sentido sentido_;
    const std::string paso_;  // the command that goes one on
    LectorRegistros lector_;
    std::int32_t registro_ = 0;
    std::optional<Fila> fila_;
    // Entries to come, from `lugar_` on.
    std::vector<std::int32_t> entradas_;
    std::size_t lugar_ = 0;
};

}  // namespace tarvoline::link
