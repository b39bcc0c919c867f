#include "zip/fuente_entrada.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <span>

namespace tarvoline::zip {

zip_source_t* FuenteEntrada::crear(zip_t* archivo) {
    return zip_source_function(archivo, &FuenteEntrada::llamada, this);
}

// libzip is C: nothing may be thrown through it.
zip_int64_t FuenteEntrada::llamada(void* estado, void* datos, zip_uint64_t longitud, zip_source_cmd_t orden) {
    auto& fuente = *static_cast<FuenteEntrada*>(estado);
    try {
        return fuente.atender(datos, longitud, orden);
    } catch (const platform::ErrorArchivo& error) {
        fuente.fallo_ = error;
        return -1;
    }
}

zip_int64_t FuenteEntrada::atender(void* datos, zip_uint64_t longitud, zip_source_cmd_t orden) {
    switch (orden) {
        case ZIP_SOURCE_SUPPORTS:
            return ZIP_SOURCE_SUPPORTS_READABLE;
        case ZIP_SOURCE_OPEN:
            pieza_ = 0;
            enPieza_ = 0;
            return 0;
        case ZIP_SOURCE_READ:
            return leer(static_cast<std::byte*>(datos), longitud);
        case ZIP_SOURCE_STAT:
            return describir(datos);
        case ZIP_SOURCE_ERROR: {
            const std::array<int, 2> codigos{ZIP_ER_READ, EIO};
            std::memcpy(datos, codigos.data(), sizeof(codigos));
            return sizeof(codigos);
        }
        case ZIP_SOURCE_CLOSE:
        case ZIP_SOURCE_FREE:
            return 0;
        default:
            return -1;
    }
}

zip_int64_t FuenteEntrada::describir(void* datos) const {
    auto* ficha = static_cast<zip_stat_t*>(datos);
    zip_stat_init(ficha);
    ficha->size = entrada_.longitud;
    ficha->comp_size = entrada_.comprimida;
    ficha->comp_method = entrada_.deflactada ? ZIP_CM_DEFLATE : ZIP_CM_STORE;
    ficha->crc = entrada_.crc;
    ficha->mtime = modificado_;
    ficha->valid |= ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_CRC | ZIP_STAT_MTIME;
    return sizeof(zip_stat_t);
}

zip_int64_t FuenteEntrada::leer(std::byte* destino, zip_uint64_t longitud) {
    std::uint64_t leidos = 0;
    while (leidos < longitud && pieza_ < entrada_.piezas.size()) {
        const Pieza& pieza = entrada_.piezas[pieza_];
        const std::uint64_t cuantos = std::min(longitud - leidos, pieza.longitud - enPieza_);
        const std::span trozo(destino + leidos, static_cast<std::size_t>(cuantos));
        if (pieza.enDerrame) {
            derrame_.leer(*pieza.enDerrame + enPieza_, trozo);
        } else {
            std::copy_n(pieza.memoria.data() + enPieza_, cuantos, trozo.data());
        }
        leidos += cuantos;
        enPieza_ += cuantos;
        if (enPieza_ == pieza.longitud) {
            ++pieza_;
            enPieza_ = 0;
        }
    }
    return static_cast<zip_int64_t>(leidos);
}

}  // namespace tarvoline::zip
