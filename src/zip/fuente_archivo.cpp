#include "zip/fuente_archivo.h"

#include <algorithm>
#include <cerrno>
#include <span>
#include <utility>

namespace tarvoline::zip {
namespace {

constexpr std::size_t buferLleno = std::size_t{1} << 20;

}  // namespace

FuenteArchivo::FuenteArchivo(platform::SistemaArchivos& archivos, std::string ruta)
    : archivos_(archivos), ruta_(std::move(ruta)) {
    zip_error_init(&error_);
}

FuenteArchivo::~FuenteArchivo() {
    zip_error_fini(&error_);
}

zip_source_t* FuenteArchivo::crear(zip_error_t* error) {
    return zip_source_function_create(&FuenteArchivo::llamada, this, error);
}

zip_int64_t FuenteArchivo::fallar(int error, int delSistema) {
    zip_error_set(&error_, error, delSistema);
    return -1;
}

// libzip is C: nothing may be thrown through it.
zip_int64_t FuenteArchivo::llamada(void* estado, void* datos, zip_uint64_t longitud, zip_source_cmd_t orden) {
    auto& fuente = *static_cast<FuenteArchivo*>(estado);
    try {
        return fuente.atender(datos, longitud, orden);
    } catch (const platform::ErrorArchivo& error) {
        if (!fuente.fallo_) fuente.fallo_ = error;
    } catch (const std::bad_alloc&) {
        return fuente.fallar(ZIP_ER_MEMORY);
    } catch (...) {
        // The internal end of the program is no std::exception; it goes on once libzip has returned.
        fuente.excepcion_ = std::current_exception();
    }
    return fuente.fallar(orden == ZIP_SOURCE_READ ? ZIP_ER_READ : ZIP_ER_WRITE, EIO);
}

zip_int64_t FuenteArchivo::atender(void* datos, zip_uint64_t longitud, zip_source_cmd_t orden) {
    switch (orden) {
        case ZIP_SOURCE_SUPPORTS:
            return ZIP_SOURCE_SUPPORTS_WRITABLE;
        case ZIP_SOURCE_ERROR:
            return zip_error_to_data(&error_, datos, longitud);
        case ZIP_SOURCE_FREE:
            return 0;
        case ZIP_SOURCE_OPEN:
        case ZIP_SOURCE_CLOSE:
        case ZIP_SOURCE_STAT:
        case ZIP_SOURCE_READ:
        case ZIP_SOURCE_SEEK:
        case ZIP_SOURCE_TELL:
            return atenderLectura(datos, longitud, orden);
        default:
            return atenderEscritura(datos, longitud, orden);
    }
}

zip_int64_t FuenteArchivo::atenderLectura(void* datos, zip_uint64_t longitud, zip_source_cmd_t orden) {
    switch (orden) {
        case ZIP_SOURCE_OPEN:
            archivo_ = archivos_.abrir(ruta_, platform::Apertura::lectura);
            posicionLectura_ = 0;
            return 0;
        case ZIP_SOURCE_CLOSE:
            archivo_.reset();
            return 0;
        case ZIP_SOURCE_STAT:
            return describir(datos);
        case ZIP_SOURCE_READ:
            return leer(datos, longitud);
        case ZIP_SOURCE_SEEK: {
            const auto total = archivo_->longitud();
            const auto nueva =
                zip_source_seek_compute_offset(posicionLectura_, total, datos, longitud, &error_);
            if (nueva < 0) return -1;
            posicionLectura_ = static_cast<std::uint64_t>(nueva);
            return 0;
        }
        default:
            return static_cast<zip_int64_t>(posicionLectura_);
    }
}

zip_int64_t FuenteArchivo::atenderEscritura(void* datos, zip_uint64_t longitud, zip_source_cmd_t orden) {
    switch (orden) {
        case ZIP_SOURCE_BEGIN_WRITE:
            temporal_ = std::make_unique<ArchivoTemporal>(archivos_, ruta_);
            bufer_.clear();
            posicionBufer_ = longitudEscrita_ = 0;
            return 0;
        case ZIP_SOURCE_WRITE:
            return escribir(datos, longitud);
        case ZIP_SOURCE_COMMIT_WRITE:
            return confirmar();
        case ZIP_SOURCE_ROLLBACK_WRITE:
            temporal_.reset();
            return 0;
        case ZIP_SOURCE_SEEK_WRITE: {
            const auto nueva = zip_source_seek_compute_offset(posicionBufer_ + bufer_.size(),
                                                              longitudEscrita_, datos, longitud, &error_);
            if (nueva < 0 || !vaciarBufer()) return -1;
            posicionBufer_ = static_cast<std::uint64_t>(nueva);
            return 0;
        }
        case ZIP_SOURCE_TELL_WRITE:
            return static_cast<zip_int64_t>(posicionBufer_ + bufer_.size());
        case ZIP_SOURCE_REMOVE:
            archivos_.borrar(ruta_);
            return 0;
        default:
            return fallar(ZIP_ER_OPNOTSUPP);
    }
}

// A file that is missing, or is there but has nothing in it, is a new archive.
zip_int64_t FuenteArchivo::describir(void* datos) {
    const auto estado = archivos_.estado(ruta_);
    if (!estado || estado->longitud == 0) return fallar(ZIP_ER_READ, ENOENT);
    auto* ficha = static_cast<zip_stat_t*>(datos);
    zip_stat_init(ficha);
    ficha->size = estado->longitud;
    ficha->valid |= ZIP_STAT_SIZE;
    return sizeof(zip_stat_t);
}

zip_int64_t FuenteArchivo::leer(void* datos, zip_uint64_t longitud) {
    const std::span destino(static_cast<std::byte*>(datos), static_cast<std::size_t>(longitud));
    const std::size_t leidos = archivo_->leer(posicionLectura_, destino);
    posicionLectura_ += leidos;
    return static_cast<zip_int64_t>(leidos);
}

zip_int64_t FuenteArchivo::escribir(const void* datos, zip_uint64_t longitud) {
    const auto* desde = static_cast<const std::byte*>(datos);
    bufer_.insert(bufer_.end(), desde, desde + longitud);
    longitudEscrita_ = std::max(longitudEscrita_, posicionBufer_ + bufer_.size());
    if (bufer_.size() >= buferLleno && !vaciarBufer()) return -1;
    return static_cast<zip_int64_t>(longitud);
}

// False, with the error set, when the writing is to be given up.
bool FuenteArchivo::vaciarBufer() {
    if (bufer_.empty()) return true;
    temporal_->archivo().escribir(posicionBufer_, bufer_);
    posicionBufer_ += bufer_.size();
    bufer_.clear();
    if (!seguir_ || seguir_()) return true;
    abandonada_ = true;
    zip_error_set(&error_, ZIP_ER_CANCELLED, 0);
    return false;
}

zip_int64_t FuenteArchivo::confirmar() {
    if (!vaciarBufer()) return -1;
    archivo_.reset();
    temporal_->publicar(ruta_);
    temporal_.reset();
    return 0;
}

}  // namespace tarvoline::zip
