// Worker: searches of the journal, and counts by reference and invoice.
#pragma once

#include <cstdint>
#include <string_view>

#include "link/lector_registros.h"
#include "link/sesion.h"

namespace tarvoline::link {

class Busquedas {
  public:
    explicit Busquedas(Sesion& sesion) : sesion_(sesion) {}
    // Whether there is a line.
    bool BuscarReferencia(std::string_view referencia);
    void BuscarDescripcion(std::string_view descripcion, bool ignorarMayusculas);
    void BuscarImporte(double importe);
    std::int32_t ExisteReferencia(std::string_view referencia);
    std::int32_t ExisteIva(std::string_view factura);

  private:
    void buscarBytes(int posicion, std::string_view bytes, bool ignorarMayusculas, bool dosTextos);
    void anadir(LectorRegistros& lector, std::int32_t registro);

    Sesion& sesion_;
};

}  // namespace tarvoline::link
