// The folders that the system gives a program and its user, by the XDG base directory rules on POSIX systems
// (a variable counts only when it holds an absolute path). All paths are absolute UTF-8, without final
// separator. None is made by being asked for.
#pragma once

#include <string>
#include <string_view>

namespace tarvoline::platform {

// The separator that the system writes in its own paths.
extern const char separador;

std::string carpetaConfiguracion();  // XDG_CONFIG_HOME; per-user settings
std::string carpetaDatosUsuario();   // XDG_DATA_HOME; "local application data"
std::string carpetaEstado();         // XDG_STATE_HOME; logs, files that must outlive a reboot
std::string carpetaTemporal();       // TMPDIR when set, else carpetaEstado()
// Application data of all users, /var/lib/tarvoline. The administrator makes it where it is wanted; a program
// uses it only when it exists and is writable.
std::string carpetaDatosComunes();
std::string carpetaConfiguracionMaquina();  // /etc/xdg: machine-wide settings
std::string carpetaInicioSesion();          // programs started at logon
std::string carpetaPersonal();              // the user's own documents, else the home folder
std::string ejecutablePropio();             // full path of the running program
std::string carpetaEjecutable();            // its folder

}  // namespace tarvoline::platform
