// Worker: reading accounts and their master data.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "link/lector_registros.h"
#include "link/operaciones.h"
#include "link/sesion.h"

namespace tarvoline::link {

class LecturaPlan {
  public:
    explicit LecturaPlan(Sesion& sesion) : sesion_(sesion) {}
    bool LeerPlan(std::string_view cuenta, std::string_view nivel, std::string_view titulo);
    std::int32_t LeerPlanEx(const PeticionPlan& peticion);
    std::int32_t LeerDatos(std::string_view cuenta, std::string_view titulo);

  private:
    // Windows-1252; an empty one restricts nothing.
    struct Condiciones {
        std::string cuenta, hasta;  // `hasta` given: a range
        std::string nivel, titulo;
    };
    // What a table calls its accounts and their names, and the keys that order them.
    struct Origen {
        int tabla;
        int posicionTitulo;
    };
    using AlPasar = std::function<void(const Fila& fila)>;

    void leer(const Origen& origen, const Condiciones& condiciones, const AlPasar& alPasar);
    void leerVecina(const Origen& origen, const Condiciones& condiciones, bool adelante,
                    const AlPasar& alPasar);
    void anadirCuenta(const Fila& fila);

    Sesion& sesion_;
};

}  // namespace tarvoline::link
