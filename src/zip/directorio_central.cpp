#include "zip/directorio_central.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "zip/zip.h"

namespace tarvoline::zip {
namespace {

constexpr std::size_t longitudFin = 22;
constexpr std::size_t longitudLocalizador = 20;
constexpr std::size_t longitudFin64 = 56;
constexpr std::size_t longitudCabecera = 46;
constexpr std::uint64_t mayorComentario = 0xFFFF;

// Little-endian numbers at an offset of a block of bytes.
class Bloque {
  public:
    explicit Bloque(std::string_view bytes) : bytes_(bytes) {}
    std::uint64_t numero(std::size_t desde, std::size_t ancho) const {
        std::uint64_t valor = 0;
        for (std::size_t i = ancho; i-- > 0;) {
            valor = valor << 8 | static_cast<unsigned char>(bytes_[desde + i]);
        }
        return valor;
    }
    bool firma(std::size_t desde, std::string_view esperada) const {
        return bytes_.substr(desde, esperada.size()) == esperada;
    }

  private:
    std::string_view bytes_;
};

struct Extension {
    std::uint64_t entradas = 0;
    std::uint64_t longitud = 0;
    std::uint64_t posicion = 0;

    bool cabeHasta(std::uint64_t limite) const {
        return longitud <= limite && posicion <= limite - longitud && entradas <= longitud / longitudCabecera;
    }
};

std::string leerBloque(platform::Archivo& archivo, std::uint64_t posicion, std::uint64_t longitud) {
    std::string bloque(static_cast<std::size_t>(longitud), '\0');
    bloque.resize(archivo.leer(posicion, std::as_writable_bytes(std::span(bloque.data(), bloque.size()))));
    return bloque;
}

// Where the Zip64 end record, if this archive has one, says that the directory is.
std::optional<Extension> extension64(platform::Archivo& archivo, std::uint64_t fin) {
    if (fin < longitudLocalizador) return std::nullopt;
    const std::string localizador = leerBloque(archivo, fin - longitudLocalizador, longitudLocalizador);
    if (localizador.size() < longitudLocalizador || !localizador.starts_with("PK\x06\x07"))
        return std::nullopt;
    const std::uint64_t posicion = Bloque(localizador).numero(8, 8);
    if (posicion > fin) return std::nullopt;
    const std::string registro = leerBloque(archivo, posicion, longitudFin64);
    if (registro.size() < longitudFin64 || !registro.starts_with("PK\x06\x06")) return std::nullopt;
    const Bloque bloque(registro);
    return Extension{bloque.numero(32, 8), bloque.numero(40, 8), bloque.numero(48, 8)};
}

std::optional<Extension> extensionEn(platform::Archivo& archivo, std::string_view cola, std::size_t desde,
                                     std::uint64_t fin) {
    const Bloque bloque(cola);
    if (bloque.numero(desde + 20, 2) > cola.size() - desde - longitudFin) return std::nullopt;
    Extension extension{bloque.numero(desde + 10, 2), bloque.numero(desde + 12, 4),
                        bloque.numero(desde + 16, 4)};
    const bool rebosa =
        extension.entradas == 0xFFFF || extension.longitud == 0xFFFFFFFF || extension.posicion == 0xFFFFFFFF;
    if (rebosa) extension = extension64(archivo, fin).value_or(extension);
    return extension.cabeHasta(fin) ? std::optional(extension) : std::nullopt;
}

bool leerNombres(std::string_view directorio, std::uint64_t entradas, std::vector<NombreCrudo>& nombres) {
    std::size_t desde = 0;
    for (std::uint64_t i = 0; i < entradas; ++i) {
        const Bloque bloque(directorio);
        if (directorio.size() - desde < longitudCabecera || !bloque.firma(desde, "PK\x01\x02")) return false;
        const auto delNombre = static_cast<std::size_t>(bloque.numero(desde + 28, 2));
        const auto demas =
            static_cast<std::size_t>(bloque.numero(desde + 30, 2) + bloque.numero(desde + 32, 2));
        if (directorio.size() - desde - longitudCabecera < delNombre + demas) return false;
        constexpr std::uint64_t banderaUtf8 = 0x800;
        nombres.push_back({std::string(directorio.substr(desde + longitudCabecera, delNombre)),
                           (bloque.numero(desde + 8, 2) & banderaUtf8) != 0});
        desde += longitudCabecera + delNombre + demas;
    }
    return true;
}

}  // namespace

int leerDirectorioCentral(platform::Archivo& archivo, std::vector<NombreCrudo>& nombres) {
    const std::uint64_t longitud = archivo.longitud();
    const std::uint64_t deCola = std::min(longitud, mayorComentario + longitudFin);
    const std::string cola = leerBloque(archivo, longitud - deCola, deCola);
    int resultado = codigo::noEsZip;
    for (std::size_t desde = cola.rfind("PK\x05\x06"); desde != std::string::npos;
         desde = desde == 0 ? std::string::npos : cola.rfind("PK\x05\x06", desde - 1)) {
        if (cola.size() - desde < longitudFin) continue;
        resultado = codigo::estructura;
        const auto extension = extensionEn(archivo, cola, desde, longitud - deCola + desde);
        if (!extension) continue;
        nombres.clear();
        const std::string directorio = leerBloque(archivo, extension->posicion, extension->longitud);
        if (leerNombres(directorio, extension->entradas, nombres)) return codigo::bien;
    }
    return resultado;
}

}  // namespace tarvoline::zip
