#include "motor/pagina.h"

namespace tarvoline::motor {

std::uint32_t sumaDePagina(const Octeto* pagina, std::uint32_t numero, std::uint64_t archivo) {
    const std::size_t usados = leerEntero<std::uint16_t>(pagina + 4);
    return static_cast<std::uint32_t>(sumaDeControl(pagina + 4, usados - 4, archivo + numero));
}

bool VistaPagina::encabezadoSano() const {
    const unsigned u = usados();
    return u >= bytesEncabezado && u <= bytesPagina && bytesBloque * bloques() <= u - bytesEncabezado &&
           (bloques() == 0) == (entradas() == 0);
}

// Below 0 when the entry lies before what is sought. In `iguales` characters both are known to agree, and the
// entry shares no more than that with the one before it; it grows with what the entry adds.
int VistaPagina::comparar(const Entrada& entrada, const Clave& buscada, Cota cota, unsigned& iguales) const {
    const Octeto* buscado = buscada.texto.data();
    unsigned i = iguales;
    const unsigned fin = std::min(entrada.comun + entrada.largo, ancho_);
    const Octeto* propio = entrada.resto + (i - entrada.comun);
    for (; i < fin; ++i, ++propio) {
        if (*propio != buscado[i]) {
            iguales = i;
            return *propio < buscado[i] ? -1 : 1;
        }
    }
    for (; i < ancho_; ++i) {
        if (buscado[i] != ' ') {
            iguales = i;
            return ' ' < buscado[i] ? -1 : 1;
        }
    }
    iguales = ancho_;
    const bool antes =
        cota == Cota::inferior ? entrada.registro < buscada.registro : entrada.registro <= buscada.registro;
    return antes ? -1 : 1;
}

// The same for the second entry of the page, seen by itself.
bool VistaPagina::segundaAntes(unsigned posicion, const Clave& buscada, Cota cota, unsigned& iguales) const {
    Clave clave;
    leerClave({0, posicion}, clave);
    iguales = comunes(clave.texto.data(), buscada.texto.data(), ancho_);
    if (iguales < ancho_) return clave.texto[iguales] < buscada.texto[iguales];
    return cota == Cota::inferior ? clave.registro < buscada.registro : clave.registro <= buscada.registro;
}

// The entries before the place lie before what is sought. Of each entry walked only the characters are looked
// at that the ones before it leave open: one that shares more with its predecessor than that does with what
// is sought lies on the same side, one that shares less lies behind.
Lugar VistaPagina::buscar(const Clave& buscada, Cota cota, unsigned& previa) const {
    previa = inicioDe(0);
    unsigned bajo = 0;
    unsigned alto = bloques();
    unsigned iguales = 0;
    if (alto == 0) return {0, bytesEncabezado};
    // From here on the first entry of block `bajo` lies before what is sought; that of an inner page does
    // anyway.
    if (nivel() == 0 && comparar(cabezaDe(0), buscada, cota, iguales) > 0) return {0, inicioDe(0)};
    // What lies between two entries shares with what is sought at least what both of them do.
    unsigned igualesAlto = 0;
    while (alto - bajo > 1) {
        const unsigned medio = (bajo + alto) / 2;
        unsigned ahora = std::min(iguales, igualesAlto);
        if (comparar(cabezaDe(medio), buscada, cota, ahora) < 0) {
            bajo = medio;
            iguales = ahora;
        } else {
            alto = medio;
            igualesAlto = ahora;
        }
    }
    const unsigned fin = finDe(bajo);
    unsigned posicion = inicioDe(bajo);
    Entrada entrada = entradaEn(posicion);
    if (nivel() > 0 && bajo == 0) {
        // Entry 0 stands for "whatever is less", so nothing follows from what it shares with entry 1.
        previa = posicion;
        posicion = entrada.fin;
        if (posicion >= fin) return {0, fin};
        if (!segundaAntes(posicion, buscada, cota, iguales)) return {0, posicion};
        entrada = entradaEn(posicion);
    }
    previa = posicion;
    for (posicion = entrada.fin; posicion < fin; previa = posicion, posicion = entrada.fin) {
        entrada = entradaEn(posicion);
        if (entrada.comun < iguales) break;
        if (entrada.comun > iguales) continue;
        if (comparar(entrada, buscada, cota, iguales) > 0) break;
    }
    return {bajo, std::min(posicion, fin)};
}

Lugar VistaPagina::final() const {
    return {bloques() == 0 ? 0 : bloques() - 1, finEntradas()};
}

Lugar VistaPagina::conEntrada(const Lugar& lugar) const {
    if (lugar.posicion < finDe(lugar.bloque) || lugar.bloque + 1 >= bloques()) return lugar;
    return {lugar.bloque + 1, inicioDe(lugar.bloque + 1)};
}

Lugar VistaPagina::siguiente(const Lugar& lugar) const {
    return conEntrada({lugar.bloque, entradaEn(lugar.posicion).fin});
}

std::optional<Lugar> VistaPagina::anterior(const Lugar& lugar) const {
    Lugar en = lugar;
    if (bloques() == 0) return std::nullopt;
    if (en.posicion <= inicioDe(en.bloque)) {
        if (en.bloque == 0) return std::nullopt;
        --en.bloque;
        en.posicion = finDe(en.bloque);
    }
    unsigned posicion = inicioDe(en.bloque);
    for (unsigned fin = entradaEn(posicion).fin; fin < en.posicion; fin = entradaEn(posicion).fin)
        posicion = fin;
    return Lugar{en.bloque, posicion};
}

void VistaPagina::seguirClave(const Entrada& entrada, Clave& salida) const {
    std::memcpy(salida.texto.data() + entrada.comun, entrada.resto, entrada.largo);
    const unsigned escritos = entrada.comun + entrada.largo;
    if (escritos < ancho_) std::memset(salida.texto.data() + escritos, ' ', ancho_ - escritos);
    salida.registro = entrada.registro;
}

void VistaPagina::leerClave(const Lugar& lugar, Clave& salida) const {
    unsigned posicion = inicioDe(lugar.bloque);
    Entrada entrada = entradaEn(posicion);
    entrada.comun = 0;
    seguirClave(entrada, salida);
    while (posicion < lugar.posicion) {
        posicion = entrada.fin;
        entrada = entradaEn(posicion);
        seguirClave(entrada, salida);
    }
}

void VistaPagina::leerPrevia(const Lugar& lugar, Clave& salida) const {
    Entrada entrada = entradaEn(inicioDe(lugar.bloque));
    entrada.comun = 0;
    seguirClave(entrada, salida);
    while (entrada.fin < lugar.posicion) {
        entrada = entradaEn(entrada.fin);
        seguirClave(entrada, salida);
    }
}

Hijo VistaPagina::hijoEn(const Lugar& lugar) const {
    const Octeto* sitio = entradaEn(lugar.posicion).hijo;
    return {leerEntero<std::uint32_t>(sitio), leerEntero<Sello>(sitio + 4)};
}

}  // namespace tarvoline::motor
