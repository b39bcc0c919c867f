#include "platform/zocalo.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace tarvoline::platform::zocalo {
namespace {

Direccion leer(const sockaddr_storage& dada) {
    std::array<char, INET6_ADDRSTRLEN> texto{};
    if (dada.ss_family == AF_INET) {
        const auto& v4 = reinterpret_cast<const sockaddr_in&>(dada);
        inet_ntop(AF_INET, &v4.sin_addr, texto.data(), INET6_ADDRSTRLEN);
        return {texto.data(), ntohs(v4.sin_port)};
    }
    if (dada.ss_family != AF_INET6) return {};
    const auto& v6 = reinterpret_cast<const sockaddr_in6&>(dada);
    if (IN6_IS_ADDR_V4MAPPED(&v6.sin6_addr)) {
        inet_ntop(AF_INET, &v6.sin6_addr.s6_addr[12], texto.data(), INET6_ADDRSTRLEN);
    } else {
        inet_ntop(AF_INET6, &v6.sin6_addr, texto.data(), INET6_ADDRSTRLEN);
    }
    return {texto.data(), ntohs(v6.sin6_port)};
}

}  // namespace

Espera esperarLectura(int conexion, std::chrono::milliseconds plazo) {
    pollfd espera{conexion, POLLIN, 0};
    int resultado = 0;
    do {
        resultado = ::poll(&espera, 1, static_cast<int>(plazo.count()));
    } while (resultado < 0 && errno == EINTR);
    if (resultado == 0) return Espera::vencida;
    return resultado > 0 ? Espera::listo : Espera::fallo;
}

void preparar(int conexion, std::chrono::seconds plazo) {
    timeval limite{};
    limite.tv_sec = plazo.count();
    ::setsockopt(conexion, SOL_SOCKET, SO_RCVTIMEO, &limite, sizeof limite);
    ::setsockopt(conexion, SOL_SOCKET, SO_SNDTIMEO, &limite, sizeof limite);
    const int si = 1;
    ::setsockopt(conexion, IPPROTO_TCP, TCP_NODELAY, &si, sizeof si);
    ::setsockopt(conexion, SOL_SOCKET, SO_KEEPALIVE, &si, sizeof si);
}

void prepararEscucha(int escucha) {
    const int si = 1;
    ::setsockopt(escucha, SOL_SOCKET, SO_REUSEADDR, &si, sizeof si);
}

std::ptrdiff_t recibir(int conexion, char* destino, std::size_t cuantos) {
    ssize_t leidos = 0;
    do {
        leidos = ::recv(conexion, destino, cuantos, 0);
    } while (leidos < 0 && errno == EINTR);
    return leidos;
}

std::ptrdiff_t enviar(int conexion, const char* origen, std::size_t cuantos) {
    ssize_t enviados = 0;
    do {
        enviados = ::send(conexion, origen, cuantos, MSG_NOSIGNAL);
    } while (enviados < 0 && errno == EINTR);
    return enviados;
}

void cerrarLectura(int conexion) {
    ::shutdown(conexion, SHUT_RD);
}

void cortar(int conexion) {
    ::shutdown(conexion, SHUT_RDWR);
}

void cerrar(int conexion) {
    cortar(conexion);
    ::close(conexion);
}

Direccion remota(int conexion) {
    sockaddr_storage dada{};
    socklen_t longitud = sizeof dada;
    return ::getpeername(conexion, reinterpret_cast<sockaddr*>(&dada), &longitud) == 0 ? leer(dada)
                                                                                       : Direccion{};
}

Direccion local(int conexion) {
    sockaddr_storage dada{};
    socklen_t longitud = sizeof dada;
    return ::getsockname(conexion, reinterpret_cast<sockaddr*>(&dada), &longitud) == 0 ? leer(dada)
                                                                                       : Direccion{};
}

bool esLocal(const std::string& direccion) {
    in_addr v4{};
    if (::inet_pton(AF_INET, direccion.c_str(), &v4) == 1) return (ntohl(v4.s_addr) >> 24U) == 127;
    return direccion == "::1" || direccion == "localhost";
}

}  // namespace tarvoline::platform::zocalo
