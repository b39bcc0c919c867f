#include "apoyo/nodo_memoria.h"

#include <algorithm>
#include <set>

namespace tarvoline::pruebas::memoria {

using platform::Rango;
using platform::TipoBloqueo;

namespace {

constexpr std::uint64_t sector = 512;

// How much of a series of changes survives: now and then all or nothing, mostly some.
class Suerte {
  public:
    explicit Suerte(std::mt19937_64& azar) : azar_(azar), clase_(azar() % 4) {}
    bool sobrevive() { return clase_ == 0 || (clase_ != 1 && azar_() % 2 == 0); }
    bool porSectores() const { return clase_ == 3; }

  private:
    std::mt19937_64& azar_;
    std::uint64_t clase_;
};

void aplicarPorSectores(const CambioContenido& cambio, Bytes& contenido, Suerte& suerte) {
    const Bytes& bytes = *cambio.bytes;
    for (std::uint64_t hecho = 0; hecho < bytes.size();) {
        const std::uint64_t posicion = cambio.posicion + hecho;
        const std::uint64_t largo = std::min(sector - posicion % sector, bytes.size() - hecho);
        const auto desde = bytes.begin() + static_cast<std::ptrdiff_t>(hecho);
        if (suerte.sobrevive()) {
            CambioContenido{posicion, Bytes(desde, desde + static_cast<std::ptrdiff_t>(largo))}.aplicar(
                contenido);
        }
        hecho += largo;
    }
}

void perderContenido(Nodo& nodo, std::mt19937_64& azar) {
    Suerte suerte(azar);
    for (const CambioContenido& cambio : nodo.pendientes) {
        if (cambio.bytes && suerte.porSectores()) {
            aplicarPorSectores(cambio, nodo.datosSeguros, suerte);
        } else if (suerte.sobrevive()) {
            cambio.aplicar(nodo.datosSeguros);
        }
    }
    nodo.pendientes.clear();
    nodo.datos = nodo.datosSeguros;
    nodo.cerrojos.clear();
}

void perderEnArbol(Nodo& nodo, std::mt19937_64& azar, std::set<const Nodo*>& vistos) {
    if (!vistos.insert(&nodo).second) return;
    if (!nodo.esDirectorio) {
        perderContenido(nodo, azar);
        return;
    }
    nodo.hijos = nodo.hijosSeguros;
    for (auto& [nombre, hijo] : nodo.hijos)
        perderEnArbol(*hijo, azar, vistos);
}

}  // namespace

void CambioContenido::aplicar(Bytes& contenido) const {
    if (!bytes) {
        contenido.resize(posicion);
        return;
    }
    contenido.resize(std::max<std::uint64_t>(contenido.size(), posicion + bytes->size()));
    std::copy(bytes->begin(), bytes->end(), contenido.begin() + static_cast<std::ptrdiff_t>(posicion));
}

void Nodo::cambiar(CambioContenido cambio) {
    cambio.aplicar(datos);
    pendientes.push_back(std::move(cambio));
}

void Nodo::asegurarContenido() {
    datosSeguros = datos;
    pendientes.clear();
}

bool Nodo::hayConflicto(const void* duenno, Rango rango, TipoBloqueo tipo) const {
    return std::any_of(cerrojos.begin(), cerrojos.end(), [&](const Cerrojo& otro) {
        const bool seTocan = otro.desde < rango.desde + rango.longitud && rango.desde < otro.hasta;
        const bool seExcluyen = tipo == TipoBloqueo::exclusivo || otro.tipo == TipoBloqueo::exclusivo;
        return otro.duenno != duenno && seTocan && seExcluyen;
    });
}

void Nodo::soltar(const void* duenno, Rango rango) {
    const std::uint64_t hasta = rango.desde + rango.longitud;
    std::vector<Cerrojo> quedan;
    for (const Cerrojo& uno : cerrojos) {
        if (uno.duenno != duenno || uno.hasta <= rango.desde || uno.desde >= hasta) {
            quedan.push_back(uno);
            continue;
        }
        if (uno.desde < rango.desde) quedan.push_back({duenno, uno.desde, rango.desde, uno.tipo});
        if (uno.hasta > hasta) quedan.push_back({duenno, hasta, uno.hasta, uno.tipo});
    }
    cerrojos = std::move(quedan);
}

void perder(Interior& interior, std::mt19937_64& azar) {
    Suerte suerte(azar);
    for (const PasoNombres& paso : interior.pendientes) {
        if (!suerte.sobrevive()) continue;
        for (const CambioNombre& cambio : paso) {
            if (cambio.nodo) {
                cambio.carpeta->hijosSeguros[cambio.nombre] = cambio.nodo;
            } else {
                cambio.carpeta->hijosSeguros.erase(cambio.nombre);
            }
        }
    }
    interior.pendientes.clear();
    ++interior.arranque;
    std::set<const Nodo*> vistos;
    perderEnArbol(*interior.raiz, azar, vistos);
}

void fallar(int numero, const std::string& ruta) {
    throw platform::ErrorArchivo(numero, ruta, ruta + ": error " + std::to_string(numero));
}

}  // namespace tarvoline::pruebas::memoria
