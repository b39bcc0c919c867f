// What a server asks of the system's TCP sockets, by their descriptor. Nothing here owns one.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace tarvoline::platform::zocalo {

enum class Espera { listo, vencida, fallo };

// Until there is something to read (or the other end has closed).
Espera esperarLectura(int conexion, std::chrono::milliseconds plazo);
// Reads and writes give up after `plazo`; what is written goes out at once.
void preparar(int conexion, std::chrono::seconds plazo);

// A listening socket: its port is free again at once after a restart, but never shared with a second service.
void prepararEscucha(int escucha);

// Bytes moved; 0 = the other end has closed; below 0 = failure or time-out.
std::ptrdiff_t recibir(int conexion, char* destino, std::size_t cuantos);
std::ptrdiff_t enviar(int conexion, const char* origen, std::size_t cuantos);

// Nothing more is read from it: whoever waits for its next request sees its end. Writes still go out.
void cerrarLectura(int conexion);
// Ends both directions at once; whoever waits on it goes on. The descriptor stays open.
void cortar(int conexion);
void cerrar(int conexion);

struct Direccion {
    std::string ip;  // an IPv4 address that came over IPv6 reads as IPv4
    int puerto = 0;
};
Direccion remota(int conexion);
Direccion local(int conexion);
// The address names this machine alone.
bool esLocal(const std::string& direccion);

}  // namespace tarvoline::platform::zocalo
