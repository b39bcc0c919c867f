// A stored archive becomes a working company again, over the old one or beside it under a free number.
//
// Everything is unpacked into the work folder "ZIP" of the data directory and made ready there; only then are
// the files renamed to their places, and a rename that fails takes the others back. So a full disk, a held
// file or a damaged archive leaves the data directory as it was.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "workflows/flujos.h"
#include "zip/zip.h"

namespace tarvoline::workflows {

class Restauracion : public Flujo {
  public:
    using Flujo::Flujo;

    void Restaurar_Click();
    // What each failure and step shows is told in the box; true when the company is on disk.
    bool RestaurarEmpresa(std::string_view archivoZip);
    // Path of the company file that the last RestaurarEmpresa made; "" when it made none.
    const std::string& rutaRestaurada() const { return rutaRestaurada_; }

    // True when every file of the company can be opened exclusively.
    bool EmpresaLibre(std::string_view archivo);
    void TerminarProceso(std::string_view nombre);

  private:
    struct Trabajo;
    void restaurarFilas();
    bool restaurar(Trabajo& trabajo);
    bool leerContenido(Trabajo& trabajo);
    bool elegirDestino(Trabajo& trabajo);
    bool prepararSobrescritura(Trabajo& trabajo);
    bool hayEspacioEnDisco(const Trabajo& trabajo);
    void prepararCarpeta(Trabajo& trabajo);
    void apartarAnteriores(const std::string& carpeta);
    void quitarCarpeta(Trabajo& trabajo);
    bool descomprimir(Trabajo& trabajo);
    void planear(Trabajo& trabajo);
    void colocar(Trabajo& trabajo);
    void contar(const Trabajo& trabajo);
    void terminarProgramaContable();
    void abrirProgramaContable();
    void avisar(const std::string& mensaje, core::Icono icono = core::Icono::exclamacion);

    std::string rutaRestaurada_;
};

}  // namespace tarvoline::workflows
