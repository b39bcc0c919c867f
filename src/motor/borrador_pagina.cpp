#include "motor/borrador_pagina.h"

#include "motor/errores.h"

namespace tarvoline::motor {

namespace {

// An entry or two on their way into the page.
using Trozo = std::array<Octeto, 3 * mayorEntrada>;

}  // namespace

void BorradorPagina::vaciar(unsigned nivel, unsigned clave) {
    std::memset(datos_.data(), 0, bytesEncabezado);
    ponerUsados(bytesEncabezado);
    datos_[6] = static_cast<Octeto>(nivel);
    datos_[7] = static_cast<Octeto>(clave);
}

void BorradorPagina::cargar(const Pagina& pagina) {
    const std::size_t usados = leerEntero<std::uint16_t>(pagina.datos.data() + 4);
    std::memcpy(datos_.data(), pagina.datos.data(), usados);
}

void BorradorPagina::descargar(Pagina& pagina) const {
    const auto sello = leerEntero<Sello>(pagina.datos.data() + 8);
    std::memcpy(pagina.datos.data(), datos_.data(), vista().usados());
    ponerEntero(pagina.datos.data() + 8, sello);
}

void BorradorPagina::sumarEntradas(int cuantas) {
    const int ahora = leerEntero<std::uint16_t>(datos_.data() + 16);
    ponerEntero(datos_.data() + 16, static_cast<std::uint16_t>(ahora + cuantas));
}

// Bytes go and come in `bloque`; the blocks behind it move along.
void BorradorPagina::reemplazar(unsigned desde, unsigned quita, const Octeto* pone, unsigned bytes,
                                unsigned bloque) {
    const unsigned usados = vista().usados();
    if (desde + quita > vista().finEntradas() || usados + bytes - quita > 2 * bytesPagina) {
        throw Danno("las entradas de una página no casan entre sí");
    }
    Octeto* const sitio = datos_.data() + desde;
    std::memmove(sitio + bytes, sitio + quita, usados - desde - quita);
    if (bytes > 0) std::memcpy(sitio, pone, bytes);
    ponerUsados(usados + bytes - quita);
    const unsigned bloques = vista().bloques();
    Octeto* const tabla = datos_.data() + vista().finEntradas();
    for (unsigned i = bloque + 1; i < bloques; ++i) {
        const unsigned antes = leerEntero<std::uint16_t>(tabla + bytesBloque * i);
        ponerEntero(tabla + bytesBloque * i, static_cast<std::uint16_t>(antes + bytes - quita));
    }
}

void BorradorPagina::insertarBloque(unsigned bloque, unsigned posicion) {
    const unsigned usados = vista().usados();
    const unsigned bloques = vista().bloques();
    Octeto* const sitio = datos_.data() + vista().finEntradas() + bytesBloque * bloque;
    std::memmove(sitio + 2, sitio, bytesBloque * (bloques - bloque));
    ponerEntero(sitio, static_cast<std::uint16_t>(posicion));
    ponerUsados(usados + 2);
    ponerEntero(datos_.data() + 18, static_cast<std::uint16_t>(bloques + 1));
}

void BorradorPagina::quitarBloque(unsigned bloque) {
    const unsigned usados = vista().usados();
    const unsigned bloques = vista().bloques();
    Octeto* const sitio = datos_.data() + vista().finEntradas() + bytesBloque * bloque;
    std::memmove(sitio, sitio + 2, bytesBloque * (bloques - bloque - 1));
    ponerUsados(usados - 2);
    ponerEntero(datos_.data() + 18, static_cast<std::uint16_t>(bloques - 1));
}

Octeto* BorradorPagina::codificar(Octeto* sitio, unsigned comun, const Clave& clave, const Hijo& hijo) const {
    const auto texto = clave.sinRelleno(ancho_);
    const unsigned largo = texto.size() > comun ? static_cast<unsigned>(texto.size()) - comun : 0;
    *sitio++ = static_cast<Octeto>(comun);
    *sitio++ = static_cast<Octeto>(largo);
    std::memcpy(sitio, clave.texto.data() + comun, largo);
    sitio = ponerVariable(sitio + largo, clave.registro);
    if (vista().nivel() == 0) return sitio;
    ponerEntero(sitio, hijo.pagina);
    ponerEntero(sitio + 4, hijo.sello);
    return sitio + bytesHijo;
}

void BorradorPagina::insertar(const Lugar& lugar, const Clave& clave, const Hijo& hijo) {
    const VistaPagina v = vista();
    if (v.bloques() == 0) {
        anadir(clave, hijo, true);
        return;
    }
    const unsigned inicio = v.inicioDe(lugar.bloque);
    Clave vecina;
    unsigned comun = 0;
    const bool esPrimera = lugar.posicion <= inicio;
    if (!esPrimera) {
        v.leerPrevia(lugar, vecina);
        comun = comunes(vecina.texto.data(), clave.texto.data(), ancho_);
    }
    Trozo trozo;
    Octeto* sitio = codificar(trozo.data(), comun, clave, hijo);
    unsigned quita = 0;
    if (lugar.posicion < v.finDe(lugar.bloque)) {
        // The entry behind shares at least as much with the new one as with the one before.
        const Entrada detras = v.entradaEn(lugar.posicion);
        v.seguirClave(detras, vecina);
        const unsigned nuevo = comunes(clave.texto.data(), vecina.texto.data(), ancho_);
        const unsigned fin = detras.comun + detras.largo;
        const unsigned largo = fin > nuevo ? fin - nuevo : 0;
        *sitio++ = static_cast<Octeto>(nuevo);
        *sitio++ = static_cast<Octeto>(largo);
        std::memcpy(sitio, vecina.texto.data() + nuevo, largo);
        sitio += largo;
        quita = static_cast<unsigned>(detras.resto + detras.largo - datos_.data()) - lugar.posicion;
    }
    reemplazar(lugar.posicion, quita, trozo.data(), static_cast<unsigned>(sitio - trozo.data()),
               lugar.bloque);
    sumarEntradas(1);
    partirBloque(lugar.bloque);
}

void BorradorPagina::quitar(const Lugar& lugar) {
    const VistaPagina v = vista();
    const Entrada propia = v.entradaEn(lugar.posicion);
    const bool esPrimera = lugar.posicion <= v.inicioDe(lugar.bloque);
    if (propia.fin >= v.finDe(lugar.bloque)) {
        reemplazar(lugar.posicion, propia.fin - lugar.posicion, nullptr, 0, lugar.bloque);
        if (esPrimera) quitarBloque(lugar.bloque);
        sumarEntradas(-1);
        return;
    }
    // The entry behind now follows the one before: of what it shared with the entry that goes it must keep
    // what that one did not itself share.
    Clave clave;
    v.leerClave(lugar, clave);
    const Entrada detras = v.entradaEn(propia.fin);
    v.seguirClave(detras, clave);
    const unsigned comun = esPrimera ? 0 : std::min(propia.comun, detras.comun);
    unsigned fin = detras.comun + detras.largo;
    while (fin > comun && clave.texto[fin - 1] == ' ')
        --fin;
    Trozo trozo;
    trozo[0] = static_cast<Octeto>(comun);
    trozo[1] = static_cast<Octeto>(fin - comun);
    std::memcpy(trozo.data() + 2, clave.texto.data() + comun, fin - comun);
    const auto hasta = static_cast<unsigned>(detras.resto + detras.largo - datos_.data());
    reemplazar(lugar.posicion, hasta - lugar.posicion, trozo.data(), 2 + fin - comun, lugar.bloque);
    sumarEntradas(-1);
}

void BorradorPagina::ponerHijo(const Lugar& lugar, const Hijo& hijo) {
    const Entrada entrada = vista().entradaEn(lugar.posicion);
    Octeto* const sitio = datos_.data() + (entrada.hijo - datos_.data());
    ponerEntero(sitio, hijo.pagina);
    ponerEntero(sitio + 4, hijo.sello);
}

void BorradorPagina::anadir(const Clave& clave, const Hijo& hijo, bool bloqueNuevo) {
    const VistaPagina v = vista();
    const unsigned fin = v.finEntradas();
    const unsigned bloques = v.bloques();
    const unsigned comun = bloqueNuevo ? 0 : comunes(ultima_.texto.data(), clave.texto.data(), ancho_);
    Trozo trozo;
    const Octeto* hasta = codificar(trozo.data(), comun, clave, hijo);
    reemplazar(fin, 0, trozo.data(), static_cast<unsigned>(hasta - trozo.data()), bloques);
    if (bloqueNuevo) insertarBloque(bloques, fin);
    sumarEntradas(1);
    ultima_ = clave;
}

void BorradorPagina::anadirPagina(const VistaPagina& otra, const Clave* primera) {
    Clave clave;
    Lugar lugar = otra.primero();
    for (bool esPrimera = true; !otra.alFinal(lugar); lugar = otra.siguiente(lugar)) {
        Entrada entrada = otra.entradaEn(lugar.posicion);
        const bool iniciaBloque = lugar.posicion == otra.inicioDe(lugar.bloque);
        if (iniciaBloque) entrada.comun = 0;
        otra.seguirClave(entrada, clave);
        const Hijo hijo = otra.nivel() > 0 ? otra.hijoEn(lugar) : Hijo{};
        anadir(esPrimera && primera != nullptr ? *primera : clave, hijo, iniciaBloque);
        esPrimera = false;
    }
}

// A block that has grown too long gets a second beginning in its middle.
void BorradorPagina::partirBloque(unsigned bloque) {
    const VistaPagina v = vista();
    const unsigned fin = v.finDe(bloque);
    unsigned cuantas = 0;
    unsigned medio = 0;
    for (unsigned posicion = v.inicioDe(bloque); posicion < fin; posicion = v.entradaEn(posicion).fin) {
        if (++cuantas == mayorBloque / 2 + 1) medio = posicion;
    }
    if (cuantas <= mayorBloque) return;
    Clave clave;
    v.leerClave({bloque, medio}, clave);
    const Entrada entrada = v.entradaEn(medio);
    const unsigned largo = static_cast<unsigned>(clave.sinRelleno(ancho_).size());
    Trozo trozo;
    trozo[0] = 0;
    trozo[1] = static_cast<Octeto>(largo);
    std::memcpy(trozo.data() + 2, clave.texto.data(), largo);
    const auto hasta = static_cast<unsigned>(entrada.resto + entrada.largo - datos_.data());
    reemplazar(medio, hasta - medio, trozo.data(), 2 + largo, bloque);
    insertarBloque(bloque + 1, medio);
}

// Where the right half of a page begins: with its last block when it grows at its end, unless that is of the
// longest texts and would itself be more than a page.
unsigned BorradorPagina::corteDe(bool alFinal) const {
    const VistaPagina v = vista();
    const auto encabezado = static_cast<unsigned>(bytesEncabezado);
    if (alFinal && v.bloques() > 1) {
        const unsigned ultimo = v.inicioDe(v.bloques() - 1);
        if (encabezado + v.finEntradas() - ultimo + bytesBloque <= bytesPagina) return ultimo;
    }
    return (encabezado + v.finEntradas()) / 2;
}

void BorradorPagina::partir(BorradorPagina& derecha, bool alFinal, Clave& separador) {
    BorradorPagina izquierda(ancho_);
    const VistaPagina v = vista();
    izquierda.vaciar(v.nivel(), v.clave());
    derecha.vaciar(v.nivel(), v.clave());
    const unsigned corte = corteDe(alFinal);
    Clave clave;
    Clave ultimaIzquierda;
    unsigned vistas = 0;
    for (Lugar lugar = v.primero(); !v.alFinal(lugar); lugar = v.siguiente(lugar), ++vistas) {
        Entrada entrada = v.entradaEn(lugar.posicion);
        const bool iniciaBloque = lugar.posicion == v.inicioDe(lugar.bloque);
        if (iniciaBloque) entrada.comun = 0;
        v.seguirClave(entrada, clave);
        const Hijo hijo = v.nivel() > 0 ? v.hijoEn(lugar) : Hijo{};
        const bool aLaDerecha = vistas > 0 && lugar.posicion >= corte;
        if (!aLaDerecha && derecha.vista().entradas() == 0) {
            izquierda.anadir(clave, hijo, iniciaBloque);
            ultimaIzquierda = clave;
            continue;
        }
        const bool primeraDerecha = derecha.vista().entradas() == 0;
        if (primeraDerecha) separador = clave;
        derecha.anadir(clave, hijo, iniciaBloque || primeraDerecha);
    }
    const bool caben = izquierda.cabe() && derecha.cabe() && derecha.vista().entradas() > 0;
    if (!caben) throw Danno("las entradas de una página no casan entre sí");
    if (v.nivel() == 0) acortarSeparador(ultimaIzquierda, separador);
    std::memcpy(datos_.data(), izquierda.datos_.data(), izquierda.vista().usados());
}

// The shortest text that still parts both sides: short separators make wide inner pages.
void BorradorPagina::acortarSeparador(const Clave& izquierda, Clave& separador) const {
    const unsigned comun = comunes(izquierda.texto.data(), separador.texto.data(), ancho_);
    if (comun == ancho_) return;  // equal texts: the record parts them
    Clave corto;
    corto.poner({reinterpret_cast<const char*>(separador.texto.data()), comun + 1}, ancho_, 0);
    // What was cut off may have been less than the blanks that stand for it.
    if (std::memcmp(corto.texto.data(), separador.texto.data(), ancho_) <= 0) separador = corto;
    separador.registro = 0;
}

}  // namespace tarvoline::motor
