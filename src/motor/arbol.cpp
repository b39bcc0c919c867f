#include "motor/arbol.h"

namespace tarvoline::motor {

Arbol::Arbol(ArchivoClaves& archivo, unsigned clave)
    : archivo_(archivo),
      raiz_(archivo.cabecera().raices[clave - 1]),
      clave_(clave),
      hoja_(raiz_.altura == 0 ? 0U : raiz_.altura - 1U) {}

const Pagina& Arbol::bajarA(std::size_t paso, const Hijo& hijo) {
    const auto nivel = hoja_ - static_cast<unsigned>(paso);
    Camino::Paso& este = camino_[paso];
    este.hijo = hijo;
    este.pagina = &archivo_.pagina(hijo, clave_, nivel);
    return *este.pagina;
}

void Arbol::bajar(const Clave& buscada, Cota cota) {
    Hijo hijo = raiz_.hijo;
    unsigned previa = 0;
    for (unsigned paso = 0; paso < hoja_; ++paso) {
        const VistaPagina v = vista(bajarA(paso, hijo));
        const Lugar lugar = v.buscar(buscada, Cota::superior, previa);
        camino_[paso].lugar = {lugar.bloque, previa};
        hijo = v.hijoEn(camino_[paso].lugar);
    }
    const VistaPagina v = vista(bajarA(hoja_, hijo));
    camino_[hoja_].lugar = v.buscar(buscada, cota, previa);
}

// To the first entry of the leaf behind; false when there is none.
bool Arbol::hojaSiguiente() {
    for (unsigned paso = hoja_; paso-- > 0;) {
        const VistaPagina v = vista(*camino_[paso].pagina);
        const Lugar lugar = v.siguiente(camino_[paso].lugar);
        if (v.alFinal(lugar)) continue;
        camino_[paso].lugar = lugar;
        for (unsigned abajo = paso; abajo < hoja_; ++abajo) {
            const Hijo hijo = vista(*camino_[abajo].pagina).hijoEn(camino_[abajo].lugar);
            camino_[abajo + 1].lugar = vista(bajarA(abajo + 1, hijo)).primero();
        }
        return true;
    }
    return false;
}

// To the end of the leaf before.
bool Arbol::hojaAnterior() {
    for (unsigned paso = hoja_; paso-- > 0;) {
        const auto lugar = vista(*camino_[paso].pagina).anterior(camino_[paso].lugar);
        if (!lugar) continue;
        camino_[paso].lugar = *lugar;
        for (unsigned abajo = paso; abajo < hoja_; ++abajo) {
            const Hijo hijo = vista(*camino_[abajo].pagina).hijoEn(camino_[abajo].lugar);
            const VistaPagina v = vista(bajarA(abajo + 1, hijo));
            camino_[abajo + 1].lugar = abajo + 1 == hoja_ ? v.final() : *v.anterior(v.final());
        }
        return true;
    }
    return false;
}

// The entry at the leaf's place, or the next leaf's first when the place is behind its last.
bool Arbol::tomar(Sitio& sitio) {
    Camino::Paso& hoja = camino_[hoja_];
    hoja.lugar = vista(*hoja.pagina).conEntrada(hoja.lugar);
    if (vista(*hoja.pagina).alFinal(hoja.lugar) && !hojaSiguiente()) return false;
    leerEn(hoja.lugar, sitio);
    return true;
}

// In the leaf of the path.
void Arbol::leerEn(const Lugar& lugar, Sitio& sitio) {
    const Camino::Paso& hoja = camino_[hoja_];
    vista(*hoja.pagina).leerClave(lugar, sitio.clave);
    sitio.hoja = hoja.hijo;
    sitio.lugar = lugar;
    sitio.cabecera = archivo_.cabecera().sello;
}

Arbol::Hallazgo Arbol::situar(const Clave& buscada, std::size_t letras, Sitio& sitio) {
    if (raiz_.altura == 0) return Hallazgo::nada;
    bajar(buscada, Cota::inferior);
    const auto coincide = [&] {
        return std::memcmp(sitio.clave.texto.data(), buscada.texto.data(), letras) == 0;
    };
    const VistaPagina v = vista(*camino_[hoja_].pagina);
    const Lugar cota = camino_[hoja_].lugar;
    const Lugar aqui = v.conEntrada(cota);
    if (!v.alFinal(aqui)) {
        leerEn(aqui, sitio);
        if (coincide()) return Hallazgo::igual;
        if (const auto previa = v.anterior(cota)) {
            leerEn(*previa, sitio);
            return Hallazgo::entre;
        }
    }
    // At the leaf's edge the answer may stand in a neighbour.
    const bool hay = tomar(sitio);
    if (hay && coincide()) return Hallazgo::igual;
    Sitio menor;
    if (!antesDe(buscada, menor)) return hay ? Hallazgo::antes : Hallazgo::nada;
    sitio = menor;
    return hay ? Hallazgo::entre : Hallazgo::despues;
}

bool Arbol::desde(const Clave& buscada, Cota cota, Sitio& sitio) {
    if (raiz_.altura == 0) return false;
    bajar(buscada, cota);
    return tomar(sitio);
}

bool Arbol::antesDe(const Clave& buscada, Sitio& sitio) {
    if (raiz_.altura == 0) return false;
    bajar(buscada, Cota::inferior);
    for (;;) {
        Camino::Paso& hoja = camino_[hoja_];
        if (const auto lugar = vista(*hoja.pagina).anterior(hoja.lugar)) {
            hoja.lugar = *lugar;
            return tomar(sitio);
        }
        if (!hojaAnterior()) return false;
    }
}

bool Arbol::primera(Sitio& sitio) {
    Clave menor;
    std::memset(menor.texto.data(), 0, archivo_.ancho());
    menor.registro = 0;
    return desde(menor, Cota::inferior, sitio);
}

bool Arbol::ultima(Sitio& sitio) {
    Clave mayor;
    std::memset(mayor.texto.data(), 0xFF, archivo_.ancho());
    mayor.registro = 0xFFFFFFFFU;
    return antesDe(mayor, sitio);
}

bool Arbol::trasSitio(const Sitio& sitio, Sitio& siguiente) {
    const VistaPagina v = vista(archivo_.pagina(sitio.hoja, clave_, 0));
    const Lugar lugar = v.siguiente(sitio.lugar);
    if (v.alFinal(lugar)) return desde(sitio.clave, Cota::superior, siguiente);
    Entrada entrada = v.entradaEn(lugar.posicion);
    if (lugar.bloque != sitio.lugar.bloque) entrada.comun = 0;
    std::memcpy(siguiente.clave.texto.data(), sitio.clave.texto.data(), entrada.comun);
    v.seguirClave(entrada, siguiente.clave);
    siguiente.hoja = sitio.hoja;
    siguiente.lugar = lugar;
    siguiente.cabecera = sitio.cabecera;
    return true;
}

}  // namespace tarvoline::motor
