// The workflows over a fresh core, and companies on disk for them.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "apoyo/nucleo_prueba.h"
#include "data/cabecera_empresa.h"
#include "data/crear_empresa.h"
#include "soap/cliente.h"
#include "tarvoline/contexto.h"
#include "tarvoline/enlace.h"
#include "workflows/flujos.h"

namespace tarvoline::pruebas {

struct MundoFlujos {
    explicit MundoFlujos(const OpcionesNucleo& opciones = {})
        : nucleo(opciones),
          enlaces(nucleo.archivos, nucleo.ajustes, nucleo.carpetas, nucleo.reloj),
          flujos(nucleo.entorno, conexion, enlaces) {}

    NucleoPrueba nucleo;
    soap::Conexion conexion;
    link::Contexto enlaces;
    workflows::Flujos flujos;

    // A company in the data directory with its nine tables, some of them filled, and a user of its own when
    // one is given. Returns the company file's path.
    std::string crearEmpresa(const std::string& nombre, const std::string& usuario = {},
                             const std::string& clave = {}) {
        const auto ruta = data::CrearEmpresaArchivos(enlaces.datos(), nucleo.datos(nombre));
        const auto numero = data::NumeroEmpresa(nucleo.archivos, ruta);
        nucleo.carpeta().escribir("datos/PLANC" + numero + ".QZD", std::string(70000, 'p') + nombre);
        nucleo.carpeta().escribir("datos/EXTRA" + numero + ".QZD", std::string(465, 'e'));
        if (!usuario.empty()) {
            link::Enlace enlace(enlaces);
            enlace.AbrirEmpresa(ruta, "");
            enlace.Config("TVUSER", usuario);
            enlace.Config("TVPASSWORD", clave);
            enlace.Config("Borrador", "1");
            enlace.CerrarEmpresa();
        }
        return ruta;
    }
    // Every file below a folder of the test by its relative name.
    std::map<std::string, std::string> archivosDe(const std::string& raiz) const;
    // What stands in an archive.
    std::map<std::string, std::string> desempaquetado(const std::string& archivo) const;
    // Protects a company with a password of at most four characters: its opening, or (PASSWORD2) its
    // configuration.
    void proteger(const std::string& ruta, std::string_view clave,
                  const data::CampoTexto& campo = data::cabecera::PASSWORD1);
};

}  // namespace tarvoline::pruebas
