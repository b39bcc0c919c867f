// The administrator's command: `tarvoline-servicio usuario ...`. Works while the service runs.
#pragma once

#include <string>

#include "platform/archivos.h"
#include "server/almacen_usuarios.h"

namespace tarvoline::server {

struct MandatoUsuario {
    std::string raiz;
    std::string alta, modificar, baja;  // at most one of these names a user
    bool listar = false;
    std::string clave;  // "-" reads one line of standard input, so that it shows in no list of processes
    std::string cuenta, etiqueta, tipo;
    std::optional<std::int64_t> gb;
};

// Says what it did on standard output. Throws ErrorServidor and platform::ErrorArchivo.
void ejecutar(const MandatoUsuario& mandato, platform::SistemaArchivos& archivos);

}  // namespace tarvoline::server
