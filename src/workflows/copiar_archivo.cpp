// Copying one file under locks, so that nobody writes to it meanwhile.
#include <algorithm>
#include <vector>

#include "workflows/empaquetado.h"

namespace tarvoline::workflows {

namespace {

using platform::ErrorArchivo;

constexpr std::size_t bloque = 32767;
constexpr int erroresTolerados = 2000;

// Repeats a failing statement, counting; a held file is no matter of patience.
class Reintentos {
  public:
    template <typename Paso>
    auto operator()(Paso&& paso) {
        for (;;) {
            try {
                return paso();
            } catch (const ErrorArchivo& error) {
                if (error.numero() == platform::error_archivo::permisoDenegado ||
                    ++fallos_ > erroresTolerados) {
                    throw;
                }
            }
        }
    }

  private:
    int fallos_ = 0;
};

void exigirBloqueo(platform::Archivo& archivo, platform::TipoBloqueo tipo, std::string_view ruta,
                   const std::string& descripcion) {
    if (!archivo.bloquear(platform::todoElArchivo, tipo)) {
        throw ErrorArchivo(platform::error_archivo::permisoDenegado, std::string(ruta), descripcion);
    }
}

void copiarContenido(platform::Archivo& entrada, platform::Archivo& salida, Reintentos& reintentar) {
    const auto longitud = reintentar([&] { return entrada.longitud(); });
    std::vector<std::byte> datos(bloque);
    std::uint64_t posicion = 0;
    for (auto cuantos = static_cast<std::size_t>(longitud % bloque); posicion < longitud; cuantos = bloque) {
        const auto trozo = std::span(datos).first(cuantos);
        if (reintentar([&] { return entrada.leer(posicion, trozo); }) != cuantos) {
            throw ErrorArchivo(platform::error_archivo::finArchivo, {},
                               "El archivo ha cambiado durante la copia");
        }
        reintentar([&] { salida.escribir(posicion, trozo); });
        posicion += cuantos;
    }
}

}  // namespace

bool Empaquetado::CopiarArchivo(std::string_view origen, std::string_view destino) {
    Reintentos reintentar;
    try {
        auto& archivos = entorno_.archivos;
        auto entrada = reintentar([&] {
            return archivos.abrir(origen, platform::Apertura::lectura, platform::Comparticion::compartida);
        });
        auto salida = reintentar([&] {
            return archivos.abrir(destino, platform::Apertura::crear, platform::Comparticion::compartida);
        });
        const auto& enUso = estado().gErrores(513);
        exigirBloqueo(*entrada, platform::TipoBloqueo::compartido, origen, enUso);
        exigirBloqueo(*salida, platform::TipoBloqueo::exclusivo, destino, enUso);
        reintentar([&] { salida->truncar(0); });  // only now: a target that is held stays as it was
        copiarContenido(*entrada, *salida, reintentar);
        return true;
    } catch (const ErrorArchivo& error) {
        entorno_.registro.aviso("CopiarArchivo " + std::string(origen) + ": " + error.what());
        if (error.numero() == platform::error_archivo::permisoDenegado) {
            entorno_.escritorio.Mensaje(
                {std::string(error.what()) + "\r\n" + std::string(origen) + "\r\n" + std::string(destino),
                 core::Icono::informacion,
                 {}});
        }
        return false;
    }
}

}  // namespace tarvoline::workflows
