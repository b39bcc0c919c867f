#include "motor/lista_libres.h"

#include "motor/errores.h"

namespace tarvoline::motor {

ListaLibres leerLista(const Pagina& pagina) {
    const Octeto* const datos = pagina.datos.data();
    const std::size_t cuantos = leerEntero<std::uint16_t>(datos + 16);
    if (cuantos > maxTramosLista) throw Danno("una lista de páginas libres está dañada");
    ListaLibres lista;
    lista.siguiente = {leerEntero<std::uint32_t>(datos + bytesEncabezado),
                       leerEntero<Sello>(datos + bytesEncabezado + 4)};
    for (std::size_t i = 0; i < cuantos; ++i) {
        const Octeto* const sitio = datos + lugarTramosLista + i * bytesTramo;
        lista.tramos.push_back({leerEntero<std::uint32_t>(sitio), leerEntero<std::uint32_t>(sitio + 4)});
    }
    return lista;
}

void ponerLista(const ListaLibres& lista, Sello sello, Pagina& pagina) {
    Octeto* const datos = pagina.datos.data();
    const std::size_t usados = lugarTramosLista + lista.tramos.size() * bytesTramo;
    std::memset(datos, 0, bytesEncabezado);
    ponerEntero(datos + 4, static_cast<std::uint16_t>(usados));
    datos[6] = nivelLibres;
    ponerEntero(datos + 8, sello);
    ponerEntero(datos + 16, static_cast<std::uint16_t>(lista.tramos.size()));
    ponerEntero(datos + bytesEncabezado, lista.siguiente.pagina);
    ponerEntero(datos + bytesEncabezado + 4, lista.siguiente.sello);
    Octeto* sitio = datos + lugarTramosLista;
    for (const Tramo& tramo : lista.tramos) {
        ponerEntero(sitio, tramo.pagina);
        ponerEntero(sitio + 4, tramo.cuantas);
        sitio += bytesTramo;
    }
}

}  // namespace tarvoline::motor
