#include "platform/marca_archivo.h"

#include <chrono>

namespace tarvoline::platform {

namespace {

// No file system dates its files more coarsely.
constexpr std::chrono::seconds granoDeFechas{2};

}  // namespace

MarcaArchivo::MarcaArchivo(SistemaArchivos& archivos, std::string_view ruta) {
    using namespace std::chrono;
    const nanoseconds ahora = system_clock::now().time_since_epoch();
    estado_ = archivos.estado(ruta);
    quieto_ = !estado_ || nanoseconds(estado_->modificado) + granoDeFechas <= ahora;
}

bool MarcaArchivo::vale(SistemaArchivos& archivos, std::string_view ruta) const {
    return quieto_ && archivos.estado(ruta) == estado_;
}

}  // namespace tarvoline::platform
