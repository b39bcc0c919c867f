// A fresh data directory, program directory and settings for one test, with the real file system under them.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "apoyo/carpeta_prueba.h"
#include "apoyo/reloj_fijo.h"
#include "core/ajustes.h"
#include "core/carpetas.h"
#include "data/capa_datos.h"
#include "data/crear_empresa.h"
#include "platform/arbol_ajustes.h"
#include "platform/archivos.h"

namespace tarvoline::pruebas {

struct MundoDatos {
    MundoDatos() {
        capa.reintentosEmpresa = {3, std::chrono::milliseconds(1)};  // a held file is given up soon
        capa.alAvisar = [this](std::string_view texto) { avisos += std::string(texto) + "\n"; };
        archivos->crearDirectorios(datos());
        archivos->crearDirectorios(programa());
        ajustes.GrabarRegistro("DATOS_DIR", datos());
        ajustes.GrabarRegistro("Directory", programa());
    }

    std::string datos(std::string_view nombre = {}) const {
        return carpeta.ruta("datos/" + std::string(nombre));
    }
    std::string programa(std::string_view nombre = {}) const {
        return carpeta.ruta("programa/" + std::string(nombre));
    }
    std::string leer(std::string_view nombre) const { return carpeta.leer("datos/" + std::string(nombre)); }
    std::string escribir(std::string_view nombre, std::string_view contenido) const {
        return carpeta.escribir("datos/" + std::string(nombre), contenido);
    }
    // Creates a company and makes it the one in force.
    std::string crear(std::string_view nombre, std::string_view opciones = {}) {
        const auto ruta = data::CrearEmpresaArchivos(capa, nombre, opciones);
        ponerEnVigor(ruta);
        return ruta;
    }
    void ponerEnVigor(const std::string& ruta, std::string_view numero = "01") {
        capa.enVigor.gArchivoEmpresa = ruta;
        capa.enVigor.gEmpresaActual = numero;
        capa.enVigor.gDirectorioEmpresa = datos();
    }

    CarpetaPrueba carpeta;
    std::unique_ptr<platform::SistemaArchivos> archivos = platform::crearSistemaArchivos();
    std::unique_ptr<platform::ArbolAjustes> arbol =
        platform::crearArbolAjustes(*archivos, carpeta.ruta("ajustes.ini"));
    core::Ajustes ajustes{*arbol};
    core::Carpetas carpetas{*archivos, ajustes, carpeta.ruta("temporal")};
    RelojFijo reloj{{2026, 3, 9, 14, 7, 0}};
    data::CapaDatos capa{*archivos, ajustes, carpetas, reloj};
    std::string avisos;  // what was passed over
};

}  // namespace tarvoline::pruebas
