// A statement written as one text, line by line.
#pragma once

#include <string>
#include <string_view>

#include "link/lector_registros.h"
#include "link/sesion.h"

namespace tarvoline::link {

// The columns of Enlace::LeerExtractoEx. A control code inside a text (a tab, a line break) becomes a blank.
class TextoExtracto {
  public:
    // `cuenta`: Windows-1252.
    TextoExtracto(const Sesion& sesion, std::string_view cuenta);

    void anadir(const Fila& fila);
    std::string tomar() { return std::move(texto_); }

  private:
    void celda(std::string_view bytesAnsi);
    void celdaNumero(double valor);
    void celdaFecha(std::string_view guardada);

    const Sesion& sesion_;
    std::string cuenta_;  // its cell
    std::string texto_;
    double saldo_ = 0;
    std::string numero_;
    // Lines come day by day.
    std::string dia_;
    std::string celdaDelDia_;
};

}  // namespace tarvoline::link
