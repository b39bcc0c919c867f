#include "motor/edicion_arbol.h"

namespace tarvoline::motor {

namespace {

// A page with less in it looks for a neighbour to join; together they may have no more than that, so that the
// next insert does not part them again.
constexpr unsigned delgada = bytesPagina / 3;
constexpr unsigned mayorUnion = bytesPagina * 7 / 8;

}  // namespace

EdicionArbol::EdicionArbol(Escritura& escritura, unsigned clave)
    : escritura_(escritura),
      raiz_(escritura.cabecera().raices[clave - 1]),
      clave_(clave),
      ancho_(escritura.ancho()),
      borrador_(ancho_) {}

bool EdicionArbol::bajar(const Clave& entrada) {
    Hijo hijo = raiz_.hijo;
    unsigned previa = 0;
    for (unsigned paso = 0; paso < hoja(); ++paso) {
        camino_[paso] = {&escritura_.leer(hijo, clave_, hoja() - paso), hijo, {}};
        const Lugar lugar = vista(paso).buscar(entrada, Cota::superior, previa);
        camino_[paso].lugar = {lugar.bloque, previa};
        hijo = vista(paso).hijoEn(camino_[paso].lugar);
    }
    camino_[hoja()] = {&escritura_.leer(hijo, clave_, 0), hijo, {}};
    const VistaPagina v = vista(hoja());
    const Lugar lugar = v.buscar(entrada, Cota::inferior, previa);
    camino_[hoja()].lugar = lugar;
    const Lugar ocupado = v.conEntrada(lugar);
    if (v.alFinal(ocupado) || v.entradaEn(ocupado.posicion).registro != entrada.registro) return false;
    Clave hallada;
    v.leerClave(ocupado, hallada);
    const bool igual = hallada.registro == entrada.registro &&
                       std::memcmp(hallada.texto.data(), entrada.texto.data(), ancho_) == 0;
    if (igual) camino_[hoja()].lugar = ocupado;
    return igual;
}

// From the root down, so that each page's new number goes into a parent that may already be written.
void EdicionArbol::apropiarCamino() {
    for (unsigned paso = 0; paso <= hoja(); ++paso) {
        Camino::Paso& este = camino_[paso];
        const Hijo antes = este.hijo;
        este.pagina = &escritura_.propia(este.hijo, clave_, hoja() - paso);
        if (este.hijo == antes) continue;
        if (paso == 0) {
            raiz_.hijo = este.hijo;
        } else {
            ponerHijo(paso - 1, camino_[paso - 1].lugar, este.hijo);
        }
    }
}

// In a page that is this command's own.
void EdicionArbol::ponerHijo(unsigned paso, const Lugar& lugar, const Hijo& hijo) {
    Octeto* const datos = propia(paso).datos.data();
    Octeto* const sitio = datos + (vista(paso).entradaEn(lugar.posicion).hijo - datos);
    ponerEntero(sitio, hijo.pagina);
    ponerEntero(sitio + 4, hijo.sello);
}

void EdicionArbol::empezar(const Clave& entrada) {
    Pagina& pagina = escritura_.nueva(raiz_.hijo, 0);
    borrador_.vaciar(0, clave_);
    borrador_.anadir(entrada, {}, true);
    borrador_.descargar(pagina);
    raiz_.altura = 1;
    raiz_.entradas = 1;
}

bool EdicionArbol::enUltimaRama() const {
    for (unsigned paso = 0; paso < hoja(); ++paso) {
        if (!vista(paso).alFinal(vista(paso).siguiente(camino_[paso].lugar))) return false;
    }
    return vista(hoja()).alFinal(camino_[hoja()].lugar);
}

bool EdicionArbol::insertar(const Clave& entrada) {
    if (raiz_.altura == 0) {
        empezar(entrada);
        return true;
    }
    if (bajar(entrada)) return false;
    const bool alFinal = enUltimaRama();
    apropiarCamino();
    borrador_.cargar(*camino_[hoja()].pagina);
    borrador_.insertar(camino_[hoja()].lugar, entrada);
    ++raiz_.entradas;
    if (borrador_.cabe()) {
        borrador_.descargar(propia(hoja()));
    } else {
        partir(hoja(), alFinal);
    }
    return true;
}

// The page at `paso` overflows in the draft. What grows at its end is parted at its end, so that entries that
// come in order fill their pages.
void EdicionArbol::partir(unsigned paso, bool alFinal) {
    for (;; --paso) {
        BorradorPagina derecha(ancho_);
        Clave separador;
        borrador_.partir(derecha, alFinal, separador);
        Hijo hijo;
        Pagina& nueva = escritura_.nueva(hijo, hoja() - paso);
        borrador_.descargar(propia(paso));
        derecha.descargar(nueva);
        if (paso == 0) {
            alzarRaiz(separador, hijo);
            return;
        }
        const Lugar lugar = camino_[paso - 1].lugar;
        borrador_.cargar(*camino_[paso - 1].pagina);
        borrador_.insertar({lugar.bloque, vista(paso - 1).entradaEn(lugar.posicion).fin}, separador, hijo);
        if (borrador_.cabe()) {
            borrador_.descargar(propia(paso - 1));
            return;
        }
    }
}

void EdicionArbol::alzarRaiz(const Clave& separador, const Hijo& derecha) {
    if (raiz_.altura >= maxAltura)
        throw Danno("el árbol de una clave es más alto de lo que piden sus entradas");
    borrador_.vaciar(raiz_.altura, clave_);
    Clave ninguna;
    ninguna.poner("", ancho_, 0);
    borrador_.anadir(ninguna, raiz_.hijo, true);
    borrador_.anadir(separador, derecha, false);
    borrador_.descargar(escritura_.nueva(raiz_.hijo, raiz_.altura));
    ++raiz_.altura;
}

bool EdicionArbol::quitar(const Clave& entrada) {
    if (raiz_.altura == 0 || !bajar(entrada)) return false;
    apropiarCamino();
    borrador_.cargar(*camino_[hoja()].pagina);
    borrador_.quitar(camino_[hoja()].lugar);
    --raiz_.entradas;
    adelgazar(hoja());
    return true;
}

// The page at `paso` has lost an entry in the draft.
void EdicionArbol::adelgazar(unsigned paso) {
    for (;; --paso) {
        if (borrador_.vista().entradas() == 0) {
            escritura_.liberar(camino_[paso].hijo);
            if (paso == 0) {
                raiz_ = {};
                return;
            }
            borrador_.cargar(*camino_[paso - 1].pagina);
            quitarHijo(paso - 1);
            continue;
        }
        borrador_.descargar(propia(paso));
        if (paso == 0) {
            bajarRaiz();
            return;
        }
        if (vista(paso).usados() >= delgada || !juntar(paso)) return;
    }
}

// An inner page's first entry keeps its key, which is the page's own lower bound: if its child goes, the next
// entry's child takes its place.
void EdicionArbol::quitarHijo(unsigned paso) {
    Lugar lugar = camino_[paso].lugar;
    const VistaPagina v = borrador_.vista();
    if (lugar.posicion == v.primero().posicion && v.entradas() > 1) {
        const Lugar segunda = v.siguiente(lugar);
        borrador_.ponerHijo(lugar, v.hijoEn(segunda));
        lugar = segunda;
    }
    borrador_.quitar(lugar);
}

// Joins the page at `paso` with a neighbour of the same parent. True when it did; the draft is then the
// parent without the right one of the two.
bool EdicionArbol::juntar(unsigned paso) {
    const VistaPagina padre = vista(paso - 1);
    const unsigned nivel = hoja() - paso;
    const Lugar este = camino_[paso - 1].lugar;
    const Lugar detras = padre.siguiente(este);
    const bool conDetras = !padre.alFinal(detras);
    const auto delante = padre.anterior(este);
    if (!conDetras && !delante) return false;
    const Lugar lugarIzquierda = conDetras ? este : *delante;
    const Lugar lugarDerecha = conDetras ? detras : este;
    Hijo izquierda = padre.hijoEn(lugarIzquierda);
    const Hijo derecha = padre.hijoEn(lugarDerecha);
    const Pagina& una = escritura_.leer(izquierda, clave_, nivel);
    const VistaPagina otra(escritura_.leer(derecha, clave_, nivel).datos.data(), ancho_);
    const unsigned juntas = VistaPagina(una.datos.data(), ancho_).usados() + otra.usados();
    if (juntas > mayorUnion) return false;
    Clave separador;
    padre.leerClave(lugarDerecha, separador);
    borrador_.cargar(una);
    borrador_.anadirPagina(otra, nivel > 0 ? &separador : nullptr);
    if (!borrador_.cabe()) return false;
    Pagina& unida = escritura_.propia(izquierda, clave_, nivel);
    ponerHijo(paso - 1, lugarIzquierda, izquierda);
    borrador_.descargar(unida);
    escritura_.liberar(derecha);
    borrador_.cargar(*camino_[paso - 1].pagina);
    borrador_.quitar(lugarDerecha);
    return true;
}

void EdicionArbol::bajarRaiz() {
    while (raiz_.altura > 1) {
        const VistaPagina v(escritura_.leer(raiz_.hijo, clave_, raiz_.altura - 1U).datos.data(), ancho_);
        if (v.entradas() > 1) return;
        const Hijo unica = v.hijoEn(v.primero());
        escritura_.liberar(raiz_.hijo);
        raiz_.hijo = unica;
        --raiz_.altura;
    }
}

}  // namespace tarvoline::motor
