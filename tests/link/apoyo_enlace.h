// A data directory with the shipped definitions, charts, currencies and rates, and a company in it, for the
// tests of the link.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "apoyo/mundo_datos.h"
#include "tarvoline/enlace.h"

namespace tarvoline::pruebas {

// `paso` throws just this.
inline void esperarError(const std::function<void()>& paso, std::uint32_t numero,
                         const std::string& descripcion, const std::string& fuente = "Veldorix OLE Server") {
    try {
        paso();
        ADD_FAILURE() << "no error " << numero;
    } catch (const link::ErrorEnlace& error) {
        EXPECT_EQ(error.numero(), numero);
        EXPECT_EQ(error.descripcion(), descripcion);
        EXPECT_EQ(error.fuente(), fuente);
    }
}

// Accounting year 2026, the short chart, euros, accounts of ten digits with parents of 1, 2, 3 and 4.
struct MundoEnlace {
    MundoEnlace() {
        mundo.ajustes.GrabarRegistro("Directory", programa());
        mundo.ajustes.GrabarRegistro("CON_DIR", carpetaCon("conceptos", {"Moneda.QZF", "Moneda1.QZF"}));
        mundo.ajustes.GrabarRegistro("IVA_DIR", carpetaCon("iva", {"IVA03.QZF"}));
        mundo.ajustes.GrabarRegistro("GLOBAL_DIR", carpeta("global"));
        contexto.alAvisar([this](const std::string& texto) { avisos += texto + "\n"; });
        contexto.alMostrar([this](const std::string&, const std::string& texto) { avisos += texto + "\n"; });
        enlace.CrearEmpresa({.NombreEmpresa = "Prueba", .año = "2026", .PlanContablePorDefecto = "1"});
        enlace.AbrirEmpresa("Prueba");
    }

    static std::string programa() { return std::string(TARVOLINE_PROGRAMA) + "/"; }
    // A folder of this world with copies of shipped files: without them the user's own folder would be used.
    std::string carpetaCon(const std::string& nombre, std::initializer_list<const char*> archivos) const {
        std::string ruta = carpeta(nombre);
        for (const auto* archivo : archivos) {
            platform::escribirAtomico(*mundo.archivos, ruta + archivo,
                                      platform::leerTodo(*mundo.archivos, programa() + archivo));
        }
        return ruta;
    }
    std::string carpeta(const std::string& nombre) const {
        std::string ruta = mundo.carpeta.ruta(nombre + "/");
        mundo.archivos->crearDirectorios(ruta);
        return ruta;
    }

    std::string avisos;  // boxes, and what was passed over
    MundoDatos mundo;
    link::Contexto contexto{*mundo.archivos, mundo.ajustes, mundo.carpetas, mundo.reloj};
    link::Enlace enlace{contexto};
};

}  // namespace tarvoline::pruebas
