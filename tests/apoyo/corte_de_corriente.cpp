// The power failures of the faulty file system: a second one in memory follows every change and knows what is
// safe; at the restart the files below are made equal to what it has kept.
#include <algorithm>

#include "apoyo/archivos_defectuosos.h"
#include "platform/rutas.h"

namespace tarvoline::pruebas {

using namespace platform;

void ArchivosDefectuosos::vigilarCorriente() {
    if (!sombra_) sombra_ = std::make_unique<ArchivosMemoria>();
}

void ArchivosDefectuosos::cortarCorriente(int cambio) {
    vigilarCorriente();
    cortarEn_ = cambio;
}

// A path that is about to change, as it lies there now: safe. Known ones stay as they are.
void ArchivosDefectuosos::copiarASombra(const std::string& ruta) {
    if (!sombra_ || ruta.empty()) return;
    if (!tocadas_.insert(ruta).second) return;
    const auto estado = base_.estado(ruta);
    if (estado && estado->esDirectorio) {
        sombra_->sembrarDirectorio(ruta);
    } else if (estado) {
        sombra_->sembrar(ruta, leerTodo(base_, ruta));
    } else if (base_.estado(carpetaDe(ruta)) && !sombra_->estado(carpetaDe(ruta))) {
        sombra_->sembrarDirectorio(carpetaDe(ruta));
    }
}

// A folder is about to move: all that lies in it moves along.
void ArchivosDefectuosos::copiarArbolASombra(const std::string& ruta) {
    if (!sombra_) return;
    copiarASombra(ruta);
    for (const EntradaDirectorio& entrada : base_.listar(ruta)) {
        copiarArbolASombra(unirRuta(ruta, entrada.nombre));
    }
}

// What has just moved here: in play, but not safe.
void ArchivosDefectuosos::tocarArbol(const std::string& ruta) {
    tocadas_.insert(ruta);
    for (const EntradaDirectorio& entrada : base_.listar(ruta))
        tocarArbol(unirRuta(ruta, entrada.nombre));
}

void ArchivosDefectuosos::perderNoSincronizado(std::uint64_t semilla) {
    if (!sombra_) throw std::logic_error("vigilarCorriente() was not called");
    sombra_->perderNoSincronizado(semilla);
    borrarLoPerdido();
    volcarSombra();
    sinCorriente_ = false;
    cortarEn_ = 0;
    ++arranque_;
}

// Longest paths first: what lies in a folder goes before it.
void ArchivosDefectuosos::borrarLoPerdido() {
    std::vector<std::string> rutas(tocadas_.begin(), tocadas_.end());
    std::sort(rutas.begin(), rutas.end(), [](const auto& a, const auto& b) { return a.size() > b.size(); });
    for (const std::string& ruta : rutas) {
        const auto abajo = base_.estado(ruta);
        const auto queda = sombra_->estado(ruta);
        if (!abajo || (queda && queda->esDirectorio == abajo->esDirectorio)) continue;
        if (abajo->esDirectorio) {
            base_.borrarDirectorio(ruta);
        } else {
            base_.borrar(ruta);
        }
    }
}

void ArchivosDefectuosos::volcarSombra() {
    for (const std::string& ruta : sombra_->todas()) {
        if (ruta.back() == '/') {
            base_.crearDirectorios(ruta, 0755);
            continue;
        }
        const std::string contenido = leerTodo(*sombra_, ruta);
        if (base_.estado(ruta) && leerTodo(base_, ruta) == contenido) continue;
        base_.abrir(ruta, Apertura::vaciar)->escribir(0, comoBytes(contenido));
    }
}

}  // namespace tarvoline::pruebas
