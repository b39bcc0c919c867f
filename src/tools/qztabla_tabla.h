// What the subcommands share that work on a table by its path.
#pragma once

#include <CLI/CLI.hpp>
#include <iosfwd>
#include <memory>
#include <string>

#include "data/verificacion.h"

namespace tarvoline::tools {

// A table as given on the command line. Members throw platform::ErrorArchivo, data::ErrorDefinicion.
struct TablaPedida {
    std::string ruta;
    std::string rutaDefinicion;  // empty: the one of the program directory

    void anadirOpciones(CLI::App& orden, const std::string& queEs);
    std::shared_ptr<const data::DefinicionTabla> leerDefinicion(platform::SistemaArchivos& archivos) const;
};

// The line of per cent on standard error; nothing where that is no terminal.
class LineaProgreso {
  public:
    // `estorba`: somebody else writes on the same terminal.
    explicit LineaProgreso(bool estorba = false);
    ~LineaProgreso();
    LineaProgreso(const LineaProgreso&) = delete;
    LineaProgreso& operator=(const LineaProgreso&) = delete;

    void mostrar(std::uint64_t hecho, std::uint64_t total);
    void borrar();
    // Calls mostrar(); valid as long as this object.
    data::Progreso comoFuncion();

  private:
    bool visible_;
    int porCiento_ = -1;
};

// Counts and sum of a table, a line each. The number of disagreements is the last.
void imprimir(const data::Verificacion& verificacion, std::ostream& salida);
// Flushes standard output; throws when not all of it could be written.
void terminarSalida();

}  // namespace tarvoline::tools
