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
    } catch (const platform::ErrorArchivo&) {
        deshacer();
        throw;
    }
    std::set<std::string> carpetas;
    for (const auto& cual : plan) {
        if (carpetas.insert(core::SepararRuta(cual.destino).directorio).second) {
            archivos_.sincronizarDirectorio(core::SepararRuta(cual.destino).directorio);
        }
    }
}

void Colocador::colocarUno(const Colocacion& cual, std::size_t indice) {
    Hecho hecho{cual.origen, cual.destino, {}};
    if (platform::existe(archivos_, cual.destino)) {
        hecho.anterior = core::conSeparadorFinal(anteriores_) + std::to_string(indice);
        archivos_.renombrar(cual.destino, hecho.anterior);
    }
    try {
        archivos_.renombrar(cual.origen, cual.destino);
    } catch (const platform::ErrorArchivo&) {
        if (!hecho.anterior.empty()) {
            archivos_.renombrar(hecho.anterior, cual.destino);
        }
        throw;
    }
    hechos_.push_back(std::move(hecho));
}

void Colocador::deshacer() {
    while (!hechos_.empty()) {
        const auto hecho = hechos_.back();
        hechos_.pop_back();
        archivos_.renombrar(hecho.destino, hecho.origen);
        if (!hecho.anterior.empty()) {
            archivos_.renombrar(hecho.anterior, hecho.destino);
        }
    }
}

void vaciarCarpeta(platform::SistemaArchivos& archivos, std::string_view carpeta, std::string_view salvo) {
    const auto base = core::conSeparadorFinal(carpeta);
    for (const auto& entrada : archivos.listar(base)) {
        if (entrada.esDirectorio) {
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
