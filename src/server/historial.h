// Who moved what: a log per user, written by the clients' lines and dated by the service.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/reloj.h"
#include "server/base_datos.h"

namespace tarvoline::server {

class Historial {
  public:
    // Older lines of a user than the newest 5000 are dropped.
    static constexpr std::int64_t maximoPorUsuario = 5000;
    static constexpr std::size_t maximoTexto = 500;  // characters of a line; the rest is cut
    // Of an answer, in bytes: a client reads 16 MiB, and a character that XML escapes takes up to six.
    static constexpr std::size_t maximoRespuesta = std::size_t{2} * 1024 * 1024;

    Historial(BaseDatos& base, const platform::Reloj& reloj) : base_(base), reloj_(reloj) {}

    // `carpeta` is the folder of the service that the user last worked in.
    void grabar(std::int64_t usuario, std::string_view texto, std::string_view carpeta);
    // Records "id@/dd/mm/yyyy hh:mm:ss@/text@/folder" separated by "|", newest first, as many as an answer
    // holds. With a filter only those whose text contains it.
    std::string leer(std::int64_t usuario, std::string_view filtro);

  private:
    BaseDatos& base_;
    const platform::Reloj& reloj_;
};

}  // namespace tarvoline::server
