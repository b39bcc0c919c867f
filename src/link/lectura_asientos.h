// Worker: reading entries back into the pending collections, and walking from one to the next.
#pragma once

#include <functional>
#include <optional>

#include "data/tabla_cursor.h"
#include "link/operaciones.h"
#include "link/sesion.h"

namespace tarvoline::link {

class LecturaAsientos {
  public:
    explicit LecturaAsientos(Sesion& sesion) : sesion_(sesion) {}
    // The lines of the session's date and number, either of which may be "", behind what is pending.
    void LeerAsiento();
    void leerVecino(Vecino cual);

  private:
    // A date or number that is blank: of any entry, or of those alone that have none.
    enum class Falta { cualquiera, ninguna };
    void leer(Falta falta);
    void leerFilas(int tabla, Falta falta, const std::function<void(data::TablaCursor& fila)>& alLeer);
    std::optional<FechaAsto> vecino(Vecino cual);

    Sesion& sesion_;
};

}  // namespace tarvoline::link
