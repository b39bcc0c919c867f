#include "motor/revision.h"

#include <set>

#include "motor/escritura.h"
#include "motor/lista_libres.h"

namespace tarvoline::motor {

namespace {

bool menor(const Clave& una, const Clave& otra, unsigned ancho) {
    const int orden = std::memcmp(una.texto.data(), otra.texto.data(), ancho);
    return orden < 0 || (orden == 0 && una.registro < otra.registro);
}

class Recorrido {
  public:
    Recorrido(ArchivoClaves& archivo, const PorEntrada& porEntrada)
        : archivo_(archivo), ancho_(archivo.ancho()), porEntrada_(porEntrada) {}

    Revision hacer() {
        const Cabecera cabecera = archivo_.cabecera();
        for (unsigned clave = 1; clave <= cabecera.claves; ++clave) {
            const Raiz& raiz = cabecera.raices[clave - 1];
            hayAnterior_ = false;
            entradas_ = 0;
            if (raiz.altura > 0) bajar(raiz.hijo, clave, raiz.altura - 1U, nullptr, nullptr);
            exigir(entradas_ == raiz.entradas, "la clave " + std::to_string(clave) + " cuenta " +
                                                   std::to_string(raiz.entradas) + " entradas y tiene " +
                                                   std::to_string(entradas_));
        }
        revisarLibres(cabecera);
        return std::move(revision_);
    }

  private:
    void exigir(bool cierto, const std::string& queja) {
        if (!cierto && revision_.fallo.empty()) revision_.fallo = queja;
    }

    // A page is seen once, be it in use or free.
    void apuntar(std::uint32_t pagina, std::uint64_t& cuenta) {
        exigir(vistas_.insert(pagina).second, "la página " + std::to_string(pagina) + " está dos veces");
        ++cuenta;
    }

    // Entries lie from `desde` on (none: no bound) and below `hasta`.
    void bajar(const Hijo& hijo, unsigned clave, unsigned nivel, const Clave* desde, const Clave* hasta) {
        if (!revision_.fallo.empty()) return;
        apuntar(hijo.pagina, revision_.paginasUsadas);
        // A copy of its own: the cache may give the page up while the walk is below it.
        const Pagina pagina = archivo_.pagina(hijo, clave, nivel);
        const VistaPagina v(pagina.datos.data(), ancho_);
        revision_.bytesUsados += v.usados();
        unsigned contadas = 0;
        Clave esta;
        Clave siguiente;
        for (Lugar lugar = v.primero(); !v.alFinal(lugar); ++contadas) {
            v.leerClave(lugar, esta);
            const Lugar detras = v.siguiente(lugar);
            const bool hayOtra = !v.alFinal(detras);
            if (hayOtra) v.leerClave(detras, siguiente);
            const bool dentro = (desde == nullptr || !menor(esta, *desde, ancho_)) &&
                                (hasta == nullptr || menor(esta, *hasta, ancho_));
            const bool primera = contadas == 0;
            exigir(dentro || (nivel > 0 && primera),
                   "la página " + std::to_string(hijo.pagina) + " tiene una entrada fuera de sus límites");
            if (nivel == 0) {
                visitar(clave, esta);
            } else {
                bajar(v.hijoEn(lugar), clave, nivel - 1, primera ? desde : &esta,
                      hayOtra ? &siguiente : hasta);
            }
            lugar = detras;
        }
        exigir(contadas == v.entradas(),
               "la página " + std::to_string(hijo.pagina) + " cuenta mal sus entradas");
    }

    void visitar(unsigned clave, const Clave& esta) {
        exigir(!hayAnterior_ || menor(anterior_, esta, ancho_),
               "la clave " + std::to_string(clave) + " está desordenada");
        anterior_ = esta;
        hayAnterior_ = true;
        ++entradas_;
        if (porEntrada_) porEntrada_(clave, esta.sinRelleno(ancho_), esta.registro);
    }

    void revisarLibres(const Cabecera& cabecera) {
        for (const Tramo& tramo : archivo_.libres())
            apuntarTramo(tramo, cabecera.marca);
        std::uint64_t enLista = 0;
        for (Hijo lista = cabecera.lista; lista.pagina != 0 && revision_.fallo.empty();) {
            apuntar(lista.pagina, revision_.paginasUsadas);
            const ListaLibres leida = leerLista(archivo_.pagina(lista, 0, nivelLibres));
            for (const Tramo& tramo : leida.tramos) {
                enLista += tramo.cuantas;
                apuntarTramo(tramo, cabecera.marca);
            }
            lista = leida.siguiente;
        }
        exigir(enLista == cabecera.enLista, "la lista de páginas libres las cuenta mal");
        exigir(vistas_.size() == cabecera.marca - primeraPagina,
               "páginas perdidas: " + std::to_string(cabecera.marca - primeraPagina - vistas_.size()));
    }

    void apuntarTramo(const Tramo& tramo, std::uint32_t marca) {
        exigir(tramo.pagina >= primeraPagina && tramo.pagina < marca && tramo.cuantas <= marca - tramo.pagina,
               "una página libre está fuera del archivo");
        for (std::uint32_t i = 0; i < tramo.cuantas && revision_.fallo.empty(); ++i)
            apuntar(tramo.pagina + i, revision_.paginasLibres);
    }

    ArchivoClaves& archivo_;
    unsigned ancho_;
    const PorEntrada& porEntrada_;
    Revision revision_;
    std::set<std::uint32_t> vistas_;
    Clave anterior_{};
    bool hayAnterior_ = false;
    std::uint64_t entradas_ = 0;
};

}  // namespace

Revision revisar(ArchivoClaves& archivo, const PorEntrada& porEntrada) {
    Revision revision;
    archivo.leerConTurno([&] { revision = Recorrido(archivo, porEntrada).hacer(); });
    return revision;
}

}  // namespace tarvoline::motor
