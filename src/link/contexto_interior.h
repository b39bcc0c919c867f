// What stands behind a Contexto: the record layer of one process.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "core/ajustes.h"
#include "core/carpetas.h"
#include "data/capa_datos.h"
#include "data/tablas.h"
#include "data/totales.h"
#include "platform/arbol_ajustes.h"
#include "platform/archivos.h"
#include "platform/reloj.h"
#include "tarvoline/contexto.h"

namespace tarvoline::link {

// The settings, folders and files of this user, for who brings none of his own.
struct PropiosDelSistema {
    PropiosDelSistema();

    std::unique_ptr<platform::SistemaArchivos> archivos;
    std::unique_ptr<platform::Reloj> reloj;
    std::unique_ptr<platform::ArbolAjustes> arbol;
    std::unique_ptr<platform::ArbolAjustes> arbolMaquina;
    core::Ajustes ajustes;
    core::Carpetas carpetas;
};

struct Contexto::Interior {
    Interior(platform::SistemaArchivos& archivos, core::Ajustes& ajustes, core::Carpetas& carpetas,
             platform::Reloj& reloj);

    // The record layer comes into being at its first use: a session that only reads a company's configuration
    // never needs the index engine.
    data::Tablas& tablas();
    data::Totales& totales();
    // Closes every table; nothing when none was ever opened.
    void cerrarTablas();

    std::unique_ptr<PropiosDelSistema> propios;
    data::CapaDatos datos;
    // Currency of the amounts that callers give: three letters, "" the base currency, and units of the base
    // currency for one of it.
    std::string Moneda;
    double CambioMoneda = 0;

  private:
    std::optional<data::Tablas> tablas_;
    std::optional<data::Totales> totales_;
};

}  // namespace tarvoline::link
