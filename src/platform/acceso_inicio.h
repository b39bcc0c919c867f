// The entry that starts a program at the user's next logon.
#pragma once

#include <string>
#include <string_view>

#include "platform/archivos.h"

namespace tarvoline::platform {

struct AccesoInicio {
    std::string nombre;   // without extension
    std::string destino;  // full path of the program, started without arguments
    std::string carpeta;  // its working folder
    std::string icono;
};

// Replaces an entry of that name. Throws ErrorArchivo.
void crearAccesoInicio(SistemaArchivos& archivos, const AccesoInicio& acceso);
// Nothing happens when there is none.
void quitarAccesoInicio(SistemaArchivos& archivos, std::string_view nombre);
bool existeAccesoInicio(SistemaArchivos& archivos, std::string_view nombre);

}  // namespace tarvoline::platform
