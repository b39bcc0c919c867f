#include "server/historial.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "core/texto.h"

namespace tarvoline::server {
namespace {

// The records' grammar has no escapes: its separators vanish from what is stored, and nothing but printable
// text remains. Taking "@/" out can bring a new one together ("@@//"), so it is repeated.
std::string sinSeparadores(std::string_view texto) {
    std::string limpio = core::Mid(texto, 1, Historial::maximoTexto);
    std::erase(limpio, '|');
    for (auto lugar = limpio.find("@/"); lugar != std::string::npos; lugar = limpio.find("@/")) {
        limpio.erase(lugar, 2);
    }
    std::ranges::replace_if(
        limpio, [](char letra) { return static_cast<unsigned char>(letra) < 0x20 || letra == 0x7F; }, ' ');
    return limpio;
}

std::string fechaHora(const platform::FechaHora& instante) {
    std::array<char, 32> texto{};
    std::snprintf(texto.data(), texto.size(), "%02d/%02d/%04d %02d:%02d:%02d", instante.dia % 100,
                  instante.mes % 100, instante.anio % 10000, instante.hora % 100, instante.minuto % 100,
                  instante.segundo % 100);
    return texto.data();
}

}  // namespace

void Historial::grabar(std::int64_t usuario, std::string_view texto, std::string_view carpeta) {
    const std::string fecha = fechaHora(reloj_.local());
    const std::string limpio = sinSeparadores(texto);
    const std::string donde = sinSeparadores(carpeta);
    base_.enTransaccion([&] {
        base_.ejecutar("INSERT INTO historial (usuario, fecha, texto, carpeta) VALUES (?, ?, ?, ?)", usuario,
                       fecha, limpio, donde);
        base_.ejecutar(
            "DELETE FROM historial WHERE usuario = ?1 AND id <= (SELECT id FROM historial WHERE usuario = ?1 "
            "ORDER BY id DESC LIMIT 1 OFFSET ?2)",
            usuario, maximoPorUsuario);
    });
}

std::string Historial::leer(std::int64_t usuario, std::string_view filtro) {
    std::string registros;
    bool lleno = false;
    base_.consultar(
        "SELECT id, fecha, texto, carpeta FROM historial WHERE usuario = ?1 AND (?2 = '' OR instr(texto, ?2) "
        "> 0) "
        "ORDER BY id DESC",
        [&](const BaseDatos::Fila& fila) {
            const std::string registro = std::to_string(fila.entero(0)) + "@/" + fila.texto(1) + "@/" +
                                         fila.texto(2) + "@/" + fila.texto(3);
            lleno = lleno || registros.size() + registro.size() >= maximoRespuesta;
            if (lleno) return;
            if (!registros.empty()) registros += '|';
            registros += registro;
        },
        usuario, filtro);
    return registros;
}

}  // namespace tarvoline::server
