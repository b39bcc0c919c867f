#include "data/tabla_suelta.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <vector>

#include "core/carpetas.h"
#include "core/texto.h"

namespace tarvoline::data {

namespace {

using platform::ErrorArchivo;

constexpr std::size_t letrasDeNombre = 5;
constexpr std::uint64_t bytesBloque = 1U << 20U;

// A network share keeps its locks from readers, too.
constexpr int intentosDeLeer = 500;
constexpr std::chrono::milliseconds pausaDeLeer{10};

std::uint64_t longitudDe(const DefinicionTabla& definicion) {
    return static_cast<std::uint64_t>(definicion.gLongitudRegistro);
}

}  // namespace

std::int64_t lugaresDe(const DefinicionTabla& definicion, std::uint64_t longitud) {
    const std::uint64_t registro = longitudDe(definicion);
    return static_cast<std::int64_t>((longitud + registro - 1) / registro);
}

void recorrerLugares(const DefinicionTabla& definicion, std::int64_t desde, std::int64_t hasta,
                     const LeerBytes& leer, const std::function<void(const RegistroLeido&)>& paso) {
    if (desde > hasta) return;
    const std::uint64_t longitud = longitudDe(definicion);
    const auto cuantos = static_cast<std::uint64_t>(hasta - desde + 1);
    const std::uint64_t porBloque = std::min(cuantos, std::max<std::uint64_t>(1, bytesBloque / longitud));
    std::string bloque(porBloque * longitud, '\0');
    for (std::int64_t numero = desde; numero <= hasta;) {
        const std::uint64_t posicion = static_cast<std::uint64_t>(numero - 1) * longitud;
        const std::uint64_t leidos = leer(posicion, std::as_writable_bytes(std::span(bloque)));
        for (std::uint64_t i = 0; i < porBloque && numero <= hasta; ++i, ++numero) {
            RegistroLeido registro{numero, EstadoRegistro::sinEscribir, {}};
            if ((i + 1) * longitud <= leidos) {
                registro.bytes = std::string_view(bloque).substr(i * longitud, longitud);
                registro.estado = estadoDeRegistro(registro.bytes);
            }
            paso(registro);
        }
    }
}

std::shared_ptr<const DefinicionTabla> definicionDeTabla(platform::SistemaArchivos& archivos,
                                                         std::string_view directorio,
                                                         std::string_view rutaDatos) {
    const core::PartesRuta partes = core::SepararRuta(rutaDatos);
    if (partes.nombre.size() < letrasDeNombre || !core::igualSinCaja(partes.extension, "QZD")) {
        throw ErrorDefinicion(std::string(rutaDatos) + " no es el nombre de una tabla (ABCDEnn.QZD)");
    }
    const std::string nombre = core::Mayusculas(partes.nombre.substr(0, letrasDeNombre));
    return CacheDefiniciones(archivos).leer(core::conSeparadorFinal(directorio) + nombre + ".QZA");
}

std::string rutaClavesDe(std::string_view rutaDatos) {
    const core::PartesRuta partes = core::SepararRuta(rutaDatos);
    return partes.directorio + partes.nombre + ".QZC";
}

TablaSuelta::TablaSuelta(platform::SistemaArchivos& archivos, std::string rutaDatos,
                         std::shared_ptr<const DefinicionTabla> definicion, Acceso acceso)
    : rutaDatos_(std::move(rutaDatos)), definicion_(std::move(definicion)) {
    using platform::Apertura;
    using platform::Comparticion;
    archivo_ = acceso == Acceso::sola
                   ? archivos.abrir(rutaDatos_, Apertura::escritura, Comparticion::exclusiva)
                   : archivos.abrir(rutaDatos_, Apertura::lectura, Comparticion::acordada);
}

std::uint64_t TablaSuelta::sobrante() {
    return archivo_->longitud() % longitudDe(*definicion_);
}

std::size_t TablaSuelta::leer(std::uint64_t posicion, std::span<std::byte> destino) {
    for (int intento = 1;; ++intento) {
        try {
            return archivo_->leer(posicion, destino);
        } catch (const ErrorArchivo& error) {
            const bool retenido = error.numero() == platform::error_archivo::permisoDenegado;
            if (!retenido || intento == intentosDeLeer) throw;
        }
        std::this_thread::sleep_for(pausaDeLeer);
    }
}

void TablaSuelta::recorrer(std::int64_t desde, std::int64_t hasta,
                           const std::function<void(const RegistroLeido&)>& paso) {
    recorrerLugares(
        *definicion_, desde, hasta,
        [this](std::uint64_t posicion, std::span<std::byte> destino) { return leer(posicion, destino); },
        paso);
}

}  // namespace tarvoline::data
