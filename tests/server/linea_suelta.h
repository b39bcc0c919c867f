// A connection that does only what the test says: for clients that send nothing, or half of something.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string_view>

#include "platform/zocalo.h"

namespace tarvoline::pruebas {

class LineaSuelta {
  public:
    explicit LineaSuelta(int puerto) : conexion_(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in donde{};
        donde.sin_family = AF_INET;
        donde.sin_port = htons(static_cast<std::uint16_t>(puerto));
        donde.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        ::connect(conexion_, reinterpret_cast<const sockaddr*>(&donde), sizeof donde);
    }
    ~LineaSuelta() { platform::zocalo::cerrar(conexion_); }
    LineaSuelta(const LineaSuelta&) = delete;
    LineaSuelta& operator=(const LineaSuelta&) = delete;

    void enviar(std::string_view bytes) { platform::zocalo::enviar(conexion_, bytes.data(), bytes.size()); }
    // Whether the other end has closed it, waiting up to `plazo` for that.
    bool cerrada(std::chrono::milliseconds plazo) {
        char octeto = 0;
        return platform::zocalo::esperarLectura(conexion_, plazo) == platform::zocalo::Espera::listo &&
               platform::zocalo::recibir(conexion_, &octeto, 1) <= 0;
    }

  private:
    int conexion_;
};

}  // namespace tarvoline::pruebas
