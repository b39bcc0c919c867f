#include "apoyo/archivos_memoria.h"

#include <algorithm>
#include <functional>

#include "apoyo/nodo_memoria.h"
#include "platform/caja.h"
#include "platform/rutas.h"

namespace tarvoline::pruebas {

using namespace platform;
using memoria::fallar;
using memoria::Nodo;

// Where a path leads. `carpeta` is null when the folder is missing (and for the root), `nodo` when the name
// is.
struct ArchivosMemoria::Lugar {
    std::shared_ptr<Nodo> carpeta;
    std::string nombre;
    std::shared_ptr<Nodo> nodo;
    std::string ruta;
};

namespace {

std::vector<std::string> partesDe(std::string_view ruta) {
    if (ruta.find('\0') != std::string_view::npos) fallar(error_archivo::ruta, std::string(ruta));
    std::vector<std::string> partes;
    std::string parte;
    const auto cerrar = [&] {
        if (parte == ".." && !partes.empty()) partes.pop_back();
        if (!parte.empty() && parte != "." && parte != "..") partes.push_back(parte);
        parte.clear();
    };
    for (const char c : ruta) {
        if (esSeparador(c)) {
            cerrar();
        } else {
            parte.push_back(c);
        }
    }
    cerrar();
    return partes;
}

// The spelling of an existing name; the name itself when there is none.
std::string nombreReal(const Nodo& carpeta, const std::string& nombre) {
    if (carpeta.hijos.count(nombre) != 0) return nombre;
    for (const auto& [otro, hijo] : carpeta.hijos) {
        if (igualPlegado(otro, nombre)) return otro;
    }
    return nombre;
}

bool contiene(const Nodo& carpeta, const Nodo* buscado) {
    return &carpeta == buscado ||
           std::any_of(carpeta.hijos.begin(), carpeta.hijos.end(),
                       [&](const auto& par) { return contiene(*par.second, buscado); });
}

}  // namespace

ArchivosMemoria::ArchivosMemoria() : interior_(std::make_shared<memoria::Interior>()) {
    interior_->raiz->esDirectorio = true;
}

ArchivosMemoria::~ArchivosMemoria() = default;

ArchivosMemoria::Lugar ArchivosMemoria::localizar(std::string_view ruta) const {
    Lugar lugar{nullptr, {}, ruta.empty() ? nullptr : interior_->raiz, {}};
    for (const std::string& parte : partesDe(ruta)) {
        const bool sigue = lugar.nodo && lugar.nodo->esDirectorio;
        lugar.carpeta = sigue ? lugar.nodo : nullptr;
        lugar.nombre = sigue ? nombreReal(*lugar.carpeta, parte) : parte;
        const auto hallado =
            sigue ? lugar.carpeta->hijos.find(lugar.nombre) : decltype(Nodo::hijos)::iterator();
        lugar.nodo = sigue && hallado != lugar.carpeta->hijos.end() ? hallado->second : nullptr;
        lugar.ruta.append("/").append(lugar.nombre);
    }
    if (lugar.ruta.empty() && !ruta.empty()) lugar.ruta.push_back('/');
    return lugar;
}

std::shared_ptr<Nodo> ArchivosMemoria::nuevoNodo(bool esDirectorio) {
    auto nodo = std::make_shared<Nodo>();
    nodo->esDirectorio = esDirectorio;
    nodo->identidad = interior_->siguienteIdentidad++;
    nodo->modificado = interior_->tic();
    return nodo;
}

// One step: all of it survives a power failure or nothing.
void ArchivosMemoria::cambiarNombres(std::vector<std::pair<Lugar*, std::shared_ptr<Nodo>>> cambios) {
    memoria::PasoNombres paso;
    for (auto& [lugar, nodo] : cambios) {
        if (nodo) {
            lugar->carpeta->hijos[lugar->nombre] = nodo;
        } else {
            lugar->carpeta->hijos.erase(lugar->nombre);
        }
        paso.push_back({lugar->carpeta, lugar->nombre, nodo});
    }
    interior_->pendientes.push_back(std::move(paso));
}

std::unique_ptr<Archivo> ArchivosMemoria::abrir(std::string_view ruta, Apertura apertura,
                                                Comparticion comparticion, unsigned /*permisos*/) {
    const std::lock_guard turno(interior_->mutex);
    Lugar lugar = localizar(ruta);
    const bool crea = apertura != Apertura::lectura && apertura != Apertura::escritura;
    if (lugar.nodo && apertura == Apertura::nuevo) fallar(error_archivo::yaExiste, lugar.ruta);
    if (lugar.nodo && lugar.nodo->esDirectorio) fallar(error_archivo::ruta, lugar.ruta);
    if (!lugar.nodo && !lugar.carpeta) fallar(error_archivo::rutaNoExiste, lugar.ruta);
    if (!lugar.nodo && !crea) fallar(error_archivo::noExiste, lugar.ruta);
    if (!lugar.nodo) {
        lugar.nodo = nuevoNodo(false);
        cambiarNombres({{&lugar, lugar.nodo}});
    }
    auto archivo =
        memoria::abrirNodo(interior_, lugar.nodo, lugar.ruta, apertura != Apertura::lectura, comparticion);
    if (apertura == Apertura::vaciar) archivo->truncar(0);
    return archivo;
}

std::optional<EstadoArchivo> ArchivosMemoria::estado(std::string_view ruta) {
    const std::lock_guard turno(interior_->mutex);
    if (ruta.find('\0') != std::string_view::npos) return std::nullopt;
    const auto nodo = localizar(ruta).nodo;
    if (!nodo) return std::nullopt;
    return EstadoArchivo{nodo->esDirectorio, nodo->datos.size(), nodo->modificado, 1, nodo->identidad};
}

void ArchivosMemoria::borrar(std::string_view ruta) {
    const std::lock_guard turno(interior_->mutex);
    Lugar lugar = localizar(ruta);
    if (!lugar.nodo)
        fallar(lugar.carpeta ? error_archivo::noExiste : error_archivo::rutaNoExiste, lugar.ruta);
    if (lugar.nodo->esDirectorio) fallar(error_archivo::ruta, lugar.ruta);
    cambiarNombres({{&lugar, nullptr}});
}

void ArchivosMemoria::renombrar(std::string_view origen, std::string_view destino) {
    const std::lock_guard turno(interior_->mutex);
    Lugar desde = localizar(origen);
    Lugar hasta = localizar(destino);
    if (!desde.nodo)
        fallar(desde.carpeta ? error_archivo::noExiste : error_archivo::rutaNoExiste, desde.ruta);
    if (!hasta.carpeta) fallar(error_archivo::rutaNoExiste, hasta.ruta);
    if (desde.ruta == hasta.ruta) {
        hasta.nombre = nombreDe(destino);
        if (hasta.nombre == desde.nombre) return;
        hasta.nodo = nullptr;
    }
    const auto nodo = desde.nodo;
    const bool noEncajan = hasta.nodo && hasta.nodo->esDirectorio != nodo->esDirectorio;
    const bool llena = hasta.nodo && !hasta.nodo->hijos.empty();
    const bool dentroDeSi = nodo->esDirectorio && contiene(*nodo, hasta.carpeta.get());
    if (noEncajan || llena || dentroDeSi) fallar(error_archivo::ruta, hasta.ruta);
    cambiarNombres({{&desde, nullptr}, {&hasta, nodo}});
}

void ArchivosMemoria::crearDirectorios(std::string_view ruta, unsigned /*modo*/) {
    const std::lock_guard turno(interior_->mutex);
    std::string hecha = "/";
    for (const std::string& parte : partesDe(ruta)) {
        hecha = unirRuta(hecha, parte);
        Lugar lugar = localizar(hecha);
        if (!lugar.nodo) cambiarNombres({{&lugar, nuevoNodo(true)}});
        if (lugar.nodo && !lugar.nodo->esDirectorio) fallar(error_archivo::ruta, lugar.ruta);
    }
}

void ArchivosMemoria::borrarDirectorio(std::string_view ruta) {
    const std::lock_guard turno(interior_->mutex);
    Lugar lugar = localizar(ruta);
    if (!lugar.nodo || !lugar.nodo->esDirectorio) fallar(error_archivo::rutaNoExiste, lugar.ruta);
    if (!lugar.nodo->hijos.empty() || !lugar.carpeta) fallar(error_archivo::ruta, lugar.ruta);
    cambiarNombres({{&lugar, nullptr}});
}

std::vector<EntradaDirectorio> ArchivosMemoria::listar(std::string_view directorio) {
    const std::lock_guard turno(interior_->mutex);
    std::vector<EntradaDirectorio> entradas;
    const auto carpeta = localizar(directorio).nodo;
    if (!carpeta) return entradas;
    for (const auto& [nombre, hijo] : carpeta->hijos) {
        entradas.push_back({nombre, hijo->esDirectorio, false, hijo->datos.size(), hijo->modificado});
    }
    std::sort(entradas.begin(), entradas.end(),
              [](const auto& a, const auto& b) { return menorPlegado(a.nombre, b.nombre); });
    return entradas;
}

std::uint64_t ArchivosMemoria::espacioLibre(std::string_view /*ruta*/) {
    return std::uint64_t{1} << 40;
}

void ArchivosMemoria::sincronizarDirectorio(std::string_view ruta) {
    const std::lock_guard turno(interior_->mutex);
    const auto carpeta = localizar(ruta).nodo;
    if (!carpeta || !carpeta->esDirectorio) fallar(error_archivo::rutaNoExiste, std::string(ruta));
    std::vector<memoria::PasoNombres> quedan;
    for (memoria::PasoNombres& paso : interior_->pendientes) {
        const bool suyo = std::any_of(paso.begin(), paso.end(),
                                      [&](const auto& cambio) { return cambio.carpeta == carpeta; });
        if (!suyo) {
            quedan.push_back(std::move(paso));
            continue;
        }
        for (const memoria::CambioNombre& cambio : paso) {
            // A name that is safe now must not fall back to what an older step left to another folder.
            for (memoria::PasoNombres& viejo : quedan) {
                std::erase_if(viejo, [&](const auto& otro) {
                    return otro.carpeta == cambio.carpeta && otro.nombre == cambio.nombre;
                });
            }
            if (cambio.nodo) {
                cambio.carpeta->hijosSeguros[cambio.nombre] = cambio.nodo;
            } else {
                cambio.carpeta->hijosSeguros.erase(cambio.nombre);
            }
        }
    }
    interior_->pendientes = std::move(quedan);
}

std::string ArchivosMemoria::resolver(std::string_view ruta) {
    const std::lock_guard turno(interior_->mutex);
    return localizar(ruta).ruta;
}

// Only the seeded names become safe: others of the folder keep waiting for their synchronisation.
std::shared_ptr<Nodo> ArchivosMemoria::sembrarNodo(std::string_view ruta, bool esDirectorio) {
    auto nodo = interior_->raiz;
    const std::vector<std::string> partes = partesDe(ruta);
    for (std::size_t i = 0; i < partes.size(); ++i) {
        const std::string nombre = nombreReal(*nodo, partes[i]);
        auto& hijo = nodo->hijos[nombre];
        const bool querido = esDirectorio || i + 1 < partes.size();
        if (!hijo) hijo = nuevoNodo(querido);
        if (hijo->esDirectorio != querido) fallar(error_archivo::ruta, std::string(ruta));
        nodo->hijosSeguros[nombre] = hijo;
        nodo = hijo;
    }
    return nodo;
}

void ArchivosMemoria::sembrarDirectorio(std::string_view ruta) {
    const std::lock_guard turno(interior_->mutex);
    sembrarNodo(ruta, true);
}

void ArchivosMemoria::sembrar(std::string_view ruta, std::string_view contenido) {
    const std::lock_guard turno(interior_->mutex);
    const auto nodo = sembrarNodo(ruta, false);
    const auto bytes = comoBytes(contenido);
    nodo->datos.assign(bytes.begin(), bytes.end());
    nodo->asegurarContenido();
}

void ArchivosMemoria::perderNoSincronizado(std::uint64_t semilla) {
    const std::lock_guard turno(interior_->mutex);
    std::mt19937_64 azar(semilla);
    memoria::perder(*interior_, azar);
}

std::vector<std::string> ArchivosMemoria::todas() {
    const std::lock_guard turno(interior_->mutex);
    std::vector<std::string> rutas;
    const std::function<void(const Nodo&, const std::string&)> andar = [&](const Nodo& nodo,
                                                                           const std::string& ruta) {
        for (const auto& [nombre, hijo] : nodo.hijos) {
            rutas.push_back(ruta + nombre + (hijo->esDirectorio ? "/" : ""));
            if (hijo->esDirectorio) andar(*hijo, std::string(rutas.back()));
        }
    };
    andar(*interior_->raiz, "/");
    std::sort(rutas.begin(), rutas.end());
    return rutas;
}

}  // namespace tarvoline::pruebas
