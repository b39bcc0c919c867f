#include "workflows/colocacion.h"

#include "core/carpetas.h"
#include "core/texto.h"

namespace tarvoline::workflows {

void Colocador::preparar(const std::vector<Colocacion>& plan) {
    std::set<std::string> carpetas;
    for (const auto& cual : plan) {
        auto archivo = archivos_.abrir(cual.origen, platform::Apertura::escritura);
        if (!cual.numero.empty()) {
            archivo->escribir(0, platform::comoBytes(core::aAnsi(cual.numero).bytes()));
        }
        archivo->sincronizar();
        carpetas.insert(core::SepararRuta(cual.destino).directorio);
    }
    for (const auto& carpeta : carpetas) {
        archivos_.crearDirectorios(carpeta);
    }
    archivos_.crearDirectorios(anteriores_);
}

void Colocador::colocar(const std::vector<Colocacion>& plan) {
    try {
        for (std::size_t i = 0; i < plan.size(); ++i) {
            colocarUno(plan[i], i);
        }
        sincronizarDestinos(plan);
    } catch (const platform::ErrorArchivo& error) {
        if (deshacer()) {
            throw;
        }
        throw platform::ErrorArchivo(error.numero(), error.ruta(),
                                     std::string(error.what()) + "\r\n" + anteriores_);
    }
}

void Colocador::colocarUno(const Colocacion& cual, std::size_t indice) {
    auto& hecho = hechos_.emplace_back(Hecho{cual.origen, cual.destino, {}, false});
    if (const auto previo = archivos_.estado(cual.destino)) {
        if (previo->esDirectorio) {
            throw platform::ErrorArchivo(platform::error_archivo::ruta, cual.destino,
                                         "Hay una carpeta con el nombre de un archivo: " + cual.destino);
        }
        auto anterior = core::conSeparadorFinal(anteriores_) + std::to_string(indice) + "-" +
                        core::SoloNombre(cual.destino);
        archivos_.renombrar(cual.destino, anterior);
        hecho.anterior = std::move(anterior);
    }
    archivos_.renombrar(cual.origen, cual.destino);
    hecho.colocado = true;
}

void Colocador::sincronizarDestinos(const std::vector<Colocacion>& plan) {
    std::set<std::string> carpetas;
    for (const auto& cual : plan) {
        const auto carpeta = core::SepararRuta(cual.destino).directorio;
        if (carpetas.insert(carpeta).second) {
            archivos_.sincronizarDirectorio(carpeta);
        }
    }
}

// Goes on to the first rename whatever fails on the way: each file that is back is one that is not lost.
bool Colocador::deshacer() {
    bool todo = true;
    for (; !hechos_.empty(); hechos_.pop_back()) {
        const auto& hecho = hechos_.back();
        if (hecho.colocado) {
            todo = volver(hecho.destino, hecho.origen) && todo;
        }
        if (!hecho.anterior.empty()) {
            todo = volver(hecho.anterior, hecho.destino) && todo;
        }
    }
    return todo;
}

bool Colocador::volver(const std::string& desde, const std::string& hasta) {
    try {
        archivos_.renombrar(desde, hasta);
        return true;
    } catch (const platform::ErrorArchivo&) {
        return false;
    }
}

void vaciarCarpeta(platform::SistemaArchivos& archivos, std::string_view carpeta, std::string_view salvo) {
    const auto base = core::conSeparadorFinal(carpeta);
    for (const auto& entrada : archivos.listar(base)) {
        if (entrada.esDirectorio && !entrada.esEnlace) {
            vaciarCarpeta(archivos, base + entrada.nombre, {});
            archivos.borrarDirectorio(base + entrada.nombre);
        } else if (entrada.nombre != salvo) {
            archivos.borrar(base + entrada.nombre);
        }
    }
}

std::string nombreSinRepetir(std::set<std::string>& usados, std::string_view nombre) {
    const auto partes = core::SepararRuta(nombre);
    std::string libre(nombre);
    for (int k = 1; !usados.insert(core::Mayusculas(libre)).second; ++k) {
        libre = partes.nombre + "~" + std::to_string(k) +
                (partes.extension.empty() ? "" : "." + partes.extension);
    }
    return libre;
}

}  // namespace tarvoline::workflows
