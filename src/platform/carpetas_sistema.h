// The folders that the system gives a program and its user. All paths are absolute UTF-8, without final
// separator.
#pragma once

#include <string>
#include <string_view>

namespace tarvoline::platform {

// The separator that the system writes in its own paths.
extern const char separador;

std::string carpetaConfiguracion();         // XDG_CONFIG_HOME; per-user settings
std::string carpetaDatosUsuario();          // XDG_DATA_HOME; "local application data"
std::string carpetaEstado();                // XDG_STATE_HOME; logs, files that must outlive a reboot
std::string carpetaTemporal();              // TMPDIR when set, else carpetaEstado()
std::string carpetaDatosComunes();          // application data of all users; may not be writable
std::string carpetaConfiguracionMaquina();  // /etc/xdg: machine-wide settings
std::string carpetaProgramas();             // where installed programs keep their files
std::string carpetaInicioSesion();          // programs started at logon
std::string carpetaPersonal();              // the user's own documents
std::string ejecutablePropio();             // full path of the running program
std::string carpetaEjecutable();            // its folder

}  // namespace tarvoline::platform
