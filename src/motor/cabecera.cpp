#include "motor/cabecera.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tarvoline::motor {

namespace {

constexpr std::string_view marcaDeFormato = "QZCLAVES";
constexpr std::uint16_t version = 2;
constexpr std::size_t lugarRaices = 64;
constexpr std::size_t bytesRaiz = 24;
constexpr std::size_t lugarSuma = bytesNucleo - 4;

std::uint32_t sumaNucleo(const Octeto* nucleo) {
    return static_cast<std::uint32_t>(sumaDeControl(nucleo, lugarSuma, 0));
}

std::size_t palabrasDelMapa(const Cabecera& cabecera) {
    constexpr std::size_t bits = 64;
    return (std::min(cabecera.marca - primeraPagina, paginasDelMapa) + bits - 1) / bits;
}

std::uint32_t sumaDeHuecos(const Cabecera& cabecera, const Octeto* bytes) {
    return static_cast<std::uint32_t>(
        sumaDeControl(bytes, bytesDeHuecos(cabecera), cabecera.archivo ^ cabecera.sello));
}

void ponerHijo(Octeto* sitio, const Hijo& hijo) {
    ponerEntero(sitio, hijo.pagina);
    ponerEntero(sitio + 4, hijo.sello);
}

Hijo leerHijo(const Octeto* sitio) {
    return {leerEntero<std::uint32_t>(sitio), leerEntero<Sello>(sitio + 4)};
}

bool sensata(const Cabecera& c) {
    const bool raices = std::all_of(c.raices.begin(), c.raices.end(), [](const Raiz& raiz) {
        return raiz.altura <= maxAltura && (raiz.altura == 0) == (raiz.entradas == 0);
    });
    return raices && c.longitud >= 1 && c.longitud <= maxLongitud && c.claves >= 1 && c.claves <= maxClaves &&
           c.marca >= primeraPagina && c.tramos <= maxTramos;
}

constexpr std::size_t bytesComienzo = 12;

std::array<Octeto, bytesComienzo> comienzoNuestro() {
    std::array<Octeto, bytesComienzo> nuestro{};
    ponerComienzo(nuestro.data());
    return nuestro;
}

}  // namespace

std::size_t bytesDeHuecos(const Cabecera& cabecera) {
    return palabrasDelMapa(cabecera) * 8 + cabecera.tramos * bytesTramo;
}

std::size_t codificarCabecera(Cabecera& cabecera, const Huecos& huecos, Octeto* destino) {
    cabecera.tramos = static_cast<std::uint32_t>(huecos.tramos.size());
    const std::size_t comienzo = lugarNucleo - bytesDeHuecos(cabecera);
    Octeto* sitio = destino + comienzo;
    for (std::size_t i = 0; i < palabrasDelMapa(cabecera); ++i) {
        ponerEntero(sitio, i < huecos.mapa.size() ? huecos.mapa[i] : std::uint64_t{0});
        sitio += 8;
    }
    for (const Tramo& tramo : huecos.tramos) {
        ponerEntero(sitio, tramo.pagina);
        ponerEntero(sitio + 4, tramo.cuantas);
        sitio += bytesTramo;
    }
    cabecera.sumaHuecos = sumaDeHuecos(cabecera, destino + comienzo);
    destino += lugarNucleo;
    std::memset(destino, 0, bytesNucleo);
    ponerComienzo(destino);
    ponerEntero(destino + 12, cabecera.longitud);
    destino[14] = cabecera.claves;
    ponerEntero(destino + 16, cabecera.archivo);
    ponerEntero(destino + lugarSello, cabecera.sello);
    ponerEntero(destino + 32, cabecera.contador);
    ponerEntero(destino + 36, cabecera.marca);
    ponerHijo(destino + 40, cabecera.lista);
    ponerEntero(destino + 52, cabecera.enLista);
    ponerEntero(destino + 56, cabecera.tramos);
    ponerEntero(destino + 60, cabecera.sumaHuecos);
    for (std::size_t i = 0; i < maxClaves; ++i) {
        Octeto* const raiz = destino + lugarRaices + bytesRaiz * i;
        ponerHijo(raiz, cabecera.raices[i].hijo);
        ponerEntero(raiz + 12, cabecera.raices[i].entradas);
        raiz[20] = cabecera.raices[i].altura;
    }
    ponerEntero(destino + lugarSuma, sumaNucleo(destino));
    return comienzo;
}

void ponerComienzo(Octeto* destino) {
    std::memcpy(destino, marcaDeFormato.data(), marcaDeFormato.size());
    ponerEntero(destino + 8, version);
    ponerEntero(destino + 10, static_cast<std::uint16_t>(bytesPagina));
}

std::optional<Cabecera> descifrarCabecera(const Octeto* nucleo, unsigned lugar) {
    if (std::memcmp(nucleo, comienzoNuestro().data(), bytesComienzo) != 0) return std::nullopt;
    if (leerEntero<std::uint32_t>(nucleo + lugarSuma) != sumaNucleo(nucleo)) return std::nullopt;
    Cabecera c;
    c.longitud = leerEntero<std::uint16_t>(nucleo + 12);
    c.claves = nucleo[14];
    c.archivo = leerEntero<std::uint64_t>(nucleo + 16);
    c.sello = leerEntero<Sello>(nucleo + lugarSello);
    c.contador = leerEntero<std::uint32_t>(nucleo + 32);
    c.marca = leerEntero<std::uint32_t>(nucleo + 36);
    c.lista = leerHijo(nucleo + 40);
    c.enLista = leerEntero<std::uint32_t>(nucleo + 52);
    c.tramos = leerEntero<std::uint32_t>(nucleo + 56);
    c.sumaHuecos = leerEntero<std::uint32_t>(nucleo + 60);
    for (std::size_t i = 0; i < maxClaves; ++i) {
        const Octeto* const raiz = nucleo + lugarRaices + bytesRaiz * i;
        c.raices[i] = {leerHijo(raiz), leerEntero<std::uint64_t>(raiz + 12), raiz[20]};
    }
    if (!sensata(c) || c.lugar() != lugar) return std::nullopt;
    return c;
}

std::optional<Huecos> descifrarHuecos(const Cabecera& cabecera, const Octeto* bytes) {
    if (sumaDeHuecos(cabecera, bytes) != cabecera.sumaHuecos) return std::nullopt;
    Huecos huecos;
    huecos.mapa.resize(palabrasDelMapa(cabecera));
    for (std::uint64_t& palabra : huecos.mapa) {
        palabra = leerEntero<std::uint64_t>(bytes);
        bytes += 8;
    }
    constexpr unsigned bits = 64;
    const unsigned enUltima = (cabecera.marca - primeraPagina) % bits;
    const bool cortada = enUltima != 0 && cabecera.marca - primeraPagina < paginasDelMapa;
    if (cortada && huecos.mapa.back() >> enUltima != 0) return std::nullopt;
    huecos.tramos.reserve(maxTramos + 1);
    std::uint64_t libreDesde = primeraPagina + paginasDelMapa;
    for (std::uint32_t i = 0; i < cabecera.tramos; ++i) {
        const Tramo tramo{leerEntero<std::uint32_t>(bytes + i * bytesTramo),
                          leerEntero<std::uint32_t>(bytes + i * bytesTramo + 4)};
        const std::uint64_t fin = std::uint64_t{tramo.pagina} + tramo.cuantas;
        if (tramo.pagina < libreDesde || tramo.cuantas == 0 || fin > cabecera.marca) return std::nullopt;
        libreDesde = fin;
        huecos.tramos.push_back(tramo);
    }
    return huecos;
}

// A file cut short within its beginning is one of ours, too.
Origen origenDe(const Octeto* comienzo) {
    const auto nuestro = comienzoNuestro();
    if (std::memcmp(nuestro.data(), comienzo, bytesComienzo) == 0) return Origen::propio;
    const auto iguales = std::mismatch(nuestro.begin(), nuestro.end(), comienzo).second;
    const bool antes =
        iguales == comienzo + marcaDeFormato.size() && comienzo[8] < version && comienzo[9] == 0;
    if (antes && comienzo[8] > 0) return Origen::antiguo;
    const bool nadaDetras = std::all_of(iguales, comienzo + bytesNucleo, [](Octeto uno) { return uno == 0; });
    if (iguales == comienzo) return nadaDetras ? Origen::en_cero : Origen::ajeno;
    return nadaDetras ? Origen::propio : Origen::ajeno;
}

}  // namespace tarvoline::motor
