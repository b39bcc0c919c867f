#include "zip/derrame.h"

#include <utility>

namespace tarvoline::zip {

using platform::ErrorArchivo;
namespace error_archivo = platform::error_archivo;

ArchivoTemporal::ArchivoTemporal(platform::SistemaArchivos& archivos, const std::string& junto)
    : archivos_(archivos) {
    constexpr int intentos = 1000;
    for (int i = 1; archivo_ == nullptr; ++i) {
        ruta_ = junto + ".tmp" + std::to_string(i);
        try {
            archivo_ = archivos_.abrir(ruta_, platform::Apertura::nuevo);
        } catch (const ErrorArchivo& error) {
            if (error.numero() != error_archivo::yaExiste || i == intentos) throw;
        }
    }
}

void ArchivoTemporal::publicar(const std::string& destino) {
    archivo_->sincronizar();
    archivo_.reset();
    archivos_.renombrar(ruta_, destino);
    ruta_.clear();
}

void ArchivoTemporal::descartar() noexcept {
    archivo_.reset();
    if (ruta_.empty()) return;
    try {
        archivos_.borrar(std::exchange(ruta_, {}));
    } catch (const ErrorArchivo& error) {
        // The run's own result matters more, and the temporary folder is swept at the next start.
        static_cast<void>(error);
    }
}

std::uint64_t Derrame::agregar(std::span<const std::byte> datos) {
    const std::lock_guard cerrojo(mutex_);
    if (temporal_ == nullptr) temporal_ = std::make_unique<ArchivoTemporal>(archivos_, junto_);
    temporal_->archivo().escribir(longitud_, datos);
    return std::exchange(longitud_, longitud_ + datos.size());
}

void Derrame::leer(std::uint64_t posicion, std::span<std::byte> destino) {
    const std::lock_guard cerrojo(mutex_);
    if (temporal_->archivo().leer(posicion, destino) != destino.size()) {
        throw ErrorArchivo(error_archivo::dispositivo, junto_, "un archivo temporal ha perdido su final");
    }
}

}  // namespace tarvoline::zip
