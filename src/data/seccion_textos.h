// The text section of a company file: from position 1025 (counted from 1) lines `NOMBRE=valor` in
// Windows-1252, each ended by CR LF, the last followed by a byte 26; what lies behind that is zero bytes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/texto.h"
#include "data/capa_datos.h"

namespace tarvoline::data {

inline constexpr std::uint64_t desplazamientoTextos = 1024;  // counted from 0

class SeccionTextos {
  public:
    explicit SeccionTextos(CapaDatos& capa) : capa_(capa) {}

    // The value behind the first place where `nombre` and "=" stand, case ignored; so a longer name that ends
    // in `nombre` answers too. "" when there is none, or the file cannot be read. An empty `archivo` means
    // the company in force.
    std::string GET_TOTAL(std::string_view nombre, std::string_view archivo = {});
    // Replaces the first line that begins with `nombre` (case ignored), or adds one. An empty value removes
    // the line. Lines of a name that came before, and lines without value, go at the same time. A line break
    // in name or value becomes a blank. Throws ErrorArchivo permisoDenegado when the file stays held.
    void PUT_TOTAL(std::string_view nombre, std::string_view valor, std::string_view archivo = {});

  private:
    CapaDatos& capa_;
};

// The same on the bytes of a section, for tests and for who has the file open.
core::TextoAnsi buscarEnSeccion(const core::TextoAnsi& seccion, std::string_view nombre);
// The new section up to and including its byte 26.
core::TextoAnsi ponerEnSeccion(const core::TextoAnsi& seccion, std::string_view nombre,
                               std::string_view valor);

}  // namespace tarvoline::data
