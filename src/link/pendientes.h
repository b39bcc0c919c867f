// The entry that a session is building, or has read.
#pragma once

#include "link/coleccion.h"
#include "tarvoline/clases.h"
#include "tarvoline/registros.h"

namespace tarvoline::link {

// Called by name as the members of Enlace that add a line.
struct Pendientes {
    Coleccion<ApunteClass> apuntes;
    Coleccion<IVAClass> ivas;
    Coleccion<CarteraClass> carteras;
    Coleccion<AnaliticaClass> analiticas;
    bool HayPendientes = false;

    // The first line of an entry empties what the one before has left. An analytic line does not begin one.
    std::shared_ptr<ApunteClass> anadir(ApunteClass linea) {
        comenzar();
        return apuntes.anadir(std::move(linea));
    }
    std::shared_ptr<IVAClass> anadir(IVAClass linea) {
        comenzar();
        return ivas.anadir(std::move(linea));
    }
    std::shared_ptr<CarteraClass> anadir(CarteraClass linea) {
        comenzar();
        return carteras.anadir(std::move(linea));
    }
    std::shared_ptr<AnaliticaClass> anadir(AnaliticaClass linea) {
        return analiticas.anadir(std::move(linea));
    }

    bool hayLineas() const {
        return !apuntes.vacia() || !ivas.vacia() || !carteras.vacia() || !analiticas.vacia();
    }
    // Leaves HayPendientes as it is.
    void vaciar() {
        apuntes.vaciar();
        ivas.vaciar();
        carteras.vaciar();
        analiticas.vaciar();
    }

  private:
    void comenzar() {
        if (!HayPendientes) vaciar();
        HayPendientes = true;
    }
};

// What the reading members have found; each empties its own before it reads.
struct Resultados {
    Coleccion<ExtractoClass> extracto;
    Coleccion<PlanClass> plan;
    Coleccion<DatosClass> datos;
    Coleccion<InmoClass> inmovilizado;
    Coleccion<DatosGlobalClass> datosGlobales;
};

}  // namespace tarvoline::link
