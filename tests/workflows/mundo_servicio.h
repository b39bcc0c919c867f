// The workflows over a fresh core, with a scripted service behind them and "maria" logged in.
#pragma once

#include <string>

#include "apoyo/servicio_guion.h"
#include "workflows/mundo_flujos.h"

namespace tarvoline::pruebas {

struct MundoServicio : MundoFlujos {
    explicit MundoServicio(const OpcionesNucleo& opciones = {}, bool conCapacidad = true)
        : MundoFlujos(opciones), servicio(conCapacidad) {
        nucleo.estado.gUrlServicio = servicio.url();
        nucleo.entrarComo("maria", "secreta", "CUENTA1");
    }

    core::Estado& estado() { return nucleo.estado; }
    core::Vista& vista() { return nucleo.vista; }
    EscritorioGuion& guion() { return nucleo.guion; }
    std::string clave(const std::string& nombre, const std::string& producto = "VELDORIX") const {
        return nucleo.ajustes.leer(nombre, "NETBACKUP", "", producto);
    }
    // The history lines that were written.
    std::vector<std::string> historia() const {
        std::vector<std::string> lineas;
        for (const auto& llamada : servicio.llamadas("GrabarHistorico")) {
            lineas.push_back(llamada.texto(2));
        }
        return lineas;
    }

    ServicioGuion servicio;
};

}  // namespace tarvoline::pruebas
