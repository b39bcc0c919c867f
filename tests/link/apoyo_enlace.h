// A data directory with the shipped definitions, charts, currencies and rates, and a company in it, for the
// tests of the link.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "apoyo/mundo_datos.h"
#include "tarvoline/enlace.h"

namespace tarvoline::pruebas {

// Accounting year 2026, the short chart, euros, accounts of ten digits with parents of 1, 2, 3 and 4.
struct MundoEnlace {
    MundoEnlace() {
        // The currency and rates files come from the shipped share, into folders of this world.
        mundo.ajustes.GrabarRegistro("Directory", std::string(TARVOLINE_PROGRAMA) + "/");
        mundo.ajustes.GrabarRegistro("CON_DIR", carpeta("conceptos"));
        mundo.ajustes.GrabarRegistro("IVA_DIR", carpeta("iva"));
        mundo.ajustes.GrabarRegistro("GLOBAL_DIR", carpeta("global"));
        contexto.alAvisar([this](const std::string& texto) { avisos += texto + "\n"; });
        contexto.alMostrar([this](const std::string&, const std::string& texto) { avisos += texto + "\n"; });
        enlace.CrearEmpresa({.NombreEmpresa = "Prueba", .año = "2026", .PlanContablePorDefecto = "1"});
        enlace.AbrirEmpresa("Prueba");
    }

    std::string carpeta(const std::string& nombre) const {
        const std::string ruta = mundo.carpeta.ruta(nombre + "/");
        mundo.archivos->crearDirectorios(ruta);
        return ruta;
    }

    std::string avisos;  // boxes, and what was passed over
    MundoDatos mundo;
    link::Contexto contexto{*mundo.archivos, mundo.ajustes, mundo.carpetas, mundo.reloj};
    link::Enlace enlace{contexto};
};

}  // namespace tarvoline::pruebas
