// One company into one dated zip archive.
//
// The tables may be in use by the accounting programs, so each is first copied under a lock into a folder of
// this run's own and compressed from there. The archive's name ends in the stamp " yyyy-MM-dd  HH mm", which
// other routines take apart by position.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "workflows/flujos.h"
#include "zip/zip.h"

namespace tarvoline::workflows {

class Empaquetado : public Flujo {
  public:
    using Flujo::Flujo;

    // The archive's full path (the name in upper case), or the problem text. `nombreDestino` not empty fixes
    // the archive's name. Problems that keep the archive from being made begin with "ERROR".
    std::string ZipEmpresa(std::string_view archivoEmpresa, std::string_view carpetaDestino, bool conImagenes,
                           bool conFecha = true, int nivel = 9, std::string_view nombreDestino = {});
    // Copies under locks; false when it gave up. Only a held file is told in a box.
    bool CopiarArchivo(std::string_view origen, std::string_view destino);

    unsigned hilos = 0;  // that compress side by side; 0 = as many as the machine has

    // Folders of the table copies lie in the temporary root under this prefix; each holds a file of the name
    // `testigo` that its process keeps open, so that a stale one can be told (workflows/temporales.h).
    static constexpr std::string_view prefijoCopias = "Copia-";
    static constexpr std::string_view testigo = "en-uso";

  private:
    struct Trabajo;
    void copiarTablas(Trabajo& trabajo);
    void nombrarArchivo(Trabajo& trabajo, std::string_view carpetaDestino, bool conFecha,
                        std::string_view nombreDestino);
    void comprimirTablas(Trabajo& trabajo);
    void comprimirImagenes(Trabajo& trabajo);
    void comprimirAdjuntos(Trabajo& trabajo);
    void borrarCopias(Trabajo& trabajo);
    void prepararZip(zip::Zip& zip);
    template <typename Paso>
    void anotando(Trabajo& trabajo, Paso&& paso);
    void traza(std::string_view texto);
    std::string conSello(std::string_view nombre);

    std::set<std::string> nombresUsados_;  // archive names given in this run
    int copias_ = 0;
};

}  // namespace tarvoline::workflows
