#include "motor/cabecera.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tarvoline::motor {

namespace {

constexpr std::string_view marcaDeFormato = "QZCLAVES";
constexpr std::uint16_t version = 1;
constexpr std::size_t lugarRaices = 64;
constexpr std::size_t bytesRaiz = 24;
constexpr std::size_t lugarSuma = bytesNucleo - 4;

std::uint32_t sumaNucleo(const Octeto* nucleo) {
    return static_cast<std::uint32_t>(sumaDeControl(nucleo, lugarSuma, 0));
}

std::uint32_t sumaDeTramos(const Cabecera& cabecera, const Octeto* bytes) {
    return static_cast<std::uint32_t>(
        sumaDeControl(bytes, cabecera.tramos * bytesTramo, cabecera.archivo ^ cabecera.sello));
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

}  // namespace

std::size_t codificarCabecera(Cabecera& cabecera, const std::vector<Tramo>& tramos, Octeto* destino) {
    const std::size_t comienzo = lugarNucleo - tramos.size() * bytesTramo;
    Octeto* sitio = destino + comienzo;
    cabecera.tramos = static_cast<std::uint32_t>(tramos.size());
    for (const Tramo& tramo : tramos) {
        ponerEntero(sitio, tramo.pagina);
        ponerEntero(sitio + 4, tramo.cuantas);
        sitio += bytesTramo;
    }
    cabecera.sumaTramos = sumaDeTramos(cabecera, destino + comienzo);
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
    ponerEntero(destino + 60, cabecera.sumaTramos);
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
    if (origenDe(nucleo) != Origen::propio) return std::nullopt;
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
    c.sumaTramos = leerEntero<std::uint32_t>(nucleo + 60);
    for (std::size_t i = 0; i < maxClaves; ++i) {
        const Octeto* const raiz = nucleo + lugarRaices + bytesRaiz * i;
        c.raices[i] = {leerHijo(raiz), leerEntero<std::uint64_t>(raiz + 12), raiz[20]};
    }
    if (!sensata(c) || c.lugar() != lugar) return std::nullopt;
    return c;
}

std::optional<std::vector<Tramo>> descifrarTramos(const Cabecera& cabecera, const Octeto* bytes) {
    if (sumaDeTramos(cabecera, bytes) != cabecera.sumaTramos) return std::nullopt;
    std::vector<Tramo> tramos;
    tramos.reserve(maxTramos + 1);
    std::uint64_t libreDesde = primeraPagina;
    for (std::uint32_t i = 0; i < cabecera.tramos; ++i) {
        const Tramo tramo{leerEntero<std::uint32_t>(bytes + i * bytesTramo),
                          leerEntero<std::uint32_t>(bytes + i * bytesTramo + 4)};
        const std::uint64_t fin = std::uint64_t{tramo.pagina} + tramo.cuantas;
        if (tramo.pagina < libreDesde || tramo.cuantas == 0 || fin > cabecera.marca) return std::nullopt;
        libreDesde = fin;
        tramos.push_back(tramo);
    }
    return tramos;
}

// A file cut short within its beginning is one of ours, too.
Origen origenDe(const Octeto* comienzo) {
    constexpr std::size_t bytesComienzo = 12;
    std::array<Octeto, bytesComienzo> nuestro{};
    ponerComienzo(nuestro.data());
    const auto iguales = std::mismatch(nuestro.begin(), nuestro.end(), comienzo).second;
    const bool nadaDetras = std::all_of(iguales, comienzo + bytesNucleo, [](Octeto uno) { return uno == 0; });
    if (iguales == comienzo) return nadaDetras ? Origen::en_cero : Origen::ajeno;
    return nadaDetras || iguales == comienzo + bytesComienzo ? Origen::propio : Origen::ajeno;
}

}  // namespace tarvoline::motor
