#include "service/piezas.h"

#include <algorithm>
#include <stdexcept>

#include "core/texto.h"

namespace tarvoline::service {

namespace {

template <typename Aviso, typename... Argumentos>
void avisar(const Aviso& aviso, Argumentos... argumentos) {
    if (aviso) {
        aviso(argumentos...);
    }
}

// One file on its way up: the buffer, which all pieces share, and the position and step of the next one.
// Both are wider than what travels, so that a sum past 2 GiB is no accident.
class Subida {
  public:
    Subida(platform::SistemaArchivos& archivos, ClienteServicio& cliente, const Identidad& quien,
           const Envio& envio, const AvisosPiezas& avisos, ResultadoPiezas& resultado)
        : archivos_(archivos),
          cliente_(cliente),
          quien_(quien),
          envio_(envio),
          avisos_(avisos),
          resultado_(resultado),
          posicion_(envio.posicion) {}

    void enUnaLlamada() {
        posicion_ = 1;
        paso_ = envio_.longitud;
        leer();
        enviar();
        resultado_.completo = !core::esError(resultado_.respuesta);
    }

    void porPiezas() {
        for (;;) {
            avisar(avisos_.turno);
            if (avisos_.detener && avisos_.detener()) {
                resultado_.detenido = true;
                return;
            }
            leer();
            avisar(avisos_.turno);
            enviar();
            if (core::esError(resultado_.respuesta)) {
                avisar(avisos_.turno);
                return;
            }
            if (paso_ + posicion_ == envio_.longitud) {
                resultado_.completo = true;
                return;
            }
            posicion_ += paso_;
            paso_ = std::min(paso_, envio_.longitud - posicion_);
            avisar(avisos_.avance, static_cast<std::int32_t>(posicion_));
        }
    }

  private:
    // Fills the buffer with paso + 1 bytes from the position on, zeros where the file has none. The position
    // is recorded before anything is read or sent: whatever happens from here on, this piece goes again.
    void leer() {
        const auto archivo =
            archivos_.abrir(envio_.ruta, platform::Apertura::lectura, platform::Comparticion::compartida);
        if (paso_ < 0) {
            throw std::length_error("Pieza de longitud negativa en " + envio_.ruta);
        }
        bytes_.resize(static_cast<std::size_t>(paso_) + 1);
        if (envio_.longitud >= longitudPieza) {
            avisar(avisos_.antesDePieza, static_cast<std::int32_t>(posicion_));
        }
        const std::size_t leidos = archivo->leer(static_cast<std::uint64_t>(posicion_) - 1, bytes_);
        std::fill(bytes_.begin() + static_cast<std::ptrdiff_t>(leidos), bytes_.end(), std::byte{0});
    }

    void enviar() {
        ++resultado_.piezas;
        resultado_.respuesta =
            cliente_.Backup(quien_, envio_.tipo, envio_.nombre, bytes_, static_cast<std::int32_t>(posicion_));
    }

    platform::SistemaArchivos& archivos_;
    ClienteServicio& cliente_;
    const Identidad& quien_;
    const Envio& envio_;
    const AvisosPiezas& avisos_;
    ResultadoPiezas& resultado_;
    soap::Bytes bytes_;
    std::int64_t posicion_;
    std::int64_t paso_ = longitudPieza;
};

}  // namespace

void EnviarPiezas(platform::SistemaArchivos& archivos, ClienteServicio& cliente, const Identidad& quien,
                  const Envio& envio, const AvisosPiezas& avisos, ResultadoPiezas& resultado) {
    Subida subida(archivos, cliente, quien, envio, avisos, resultado);
    if (envio.longitud < longitudPieza) {
        subida.enUnaLlamada();
    } else {
        subida.porPiezas();
    }
}

void RecibirPiezas(ClienteServicio& cliente, const Identidad& quien, const Recepcion& recepcion,
                   platform::Archivo& destino, const AvisosPiezas& avisos, ResultadoPiezas& resultado) {
    const std::int64_t total = recepcion.total;
    std::int64_t posicion = 1;
    std::int64_t paso = std::min<std::int64_t>(longitudPieza, total);
    bool enteras = true;
    soap::Bytes bytes;
    for (;;) {
        if (avisos.detener && avisos.detener()) {
            resultado.detenido = true;
            return;
        }
        avisar(avisos.turno);
        ++resultado.piezas;
        resultado.respuesta =
            cliente.Restore(quien, recepcion.tipo, recepcion.nombre, static_cast<std::int32_t>(posicion),
                            static_cast<std::int32_t>(paso), bytes);
        avisar(avisos.turno);
        if (core::esError(resultado.respuesta)) {
            return;
        }
        destino.escribir(static_cast<std::uint64_t>(posicion) - 1, bytes);
        enteras = enteras && static_cast<std::int64_t>(bytes.size()) == paso;
        if (posicion + paso > total) {
            resultado.completo = enteras;
            return;
        }
        posicion += paso;
        paso = std::min(paso, total - posicion + 1);
        avisar(avisos.avance, static_cast<std::int32_t>(posicion));
    }
}

}  // namespace tarvoline::service
