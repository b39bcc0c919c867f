// Files that are ready in a work folder go to their places, all of them or none.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/archivos.h"

namespace tarvoline::workflows {

struct Colocacion {
    std::string origen;
    std::string destino;
    std::string numero;  // not empty: the company number that is written over the file's first two bytes
};

class Colocador {
  public:
    // `anteriores`: folder that takes the files which are replaced, until all is done.
    Colocador(platform::SistemaArchivos& archivos, std::string anteriores)
        : archivos_(archivos), anteriores_(std::move(anteriores)) {}

    // Writes numbers, makes target folders and brings everything to the device. No target is touched.
    void preparar(const std::vector<Colocacion>& plan);
    // Renames each file to its target. A failure takes every rename back and is thrown on; its text names the
    // folder of the replaced files when one of them would not go back.
    void colocar(const std::vector<Colocacion>& plan);

  private:
    struct Hecho {
        std::string origen, destino;
        std::string anterior;  // where the replaced file went; "": nothing was replaced
        bool colocado = false;
    };
    void colocarUno(const Colocacion& cual, std::size_t indice);
    void sincronizarDestinos(const std::vector<Colocacion>& plan);
    bool deshacer();
    bool volver(const std::string& desde, const std::string& hasta);

    platform::SistemaArchivos& archivos_;
    std::string anteriores_;
    std::vector<Hecho> hechos_;
};

// Deletes what a folder holds, folders below it too, but for one file of it. Links go, their targets stay.
void vaciarCarpeta(platform::SistemaArchivos& archivos, std::string_view carpeta, std::string_view salvo);

// `nombre`, or "name~1.ext", "name~2.ext", ... when it was given out before. Case ignored.
std::string nombreSinRepetir(std::set<std::string>& usados, std::string_view nombre);

}  // namespace tarvoline::workflows
