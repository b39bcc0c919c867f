// What the person wrote on the command line of tarvoline-copias.
#pragma once

#include <string>
#include <vector>

namespace tarvoline::consola {

// Exit codes, stable for scripts.
namespace salida {
inline constexpr int bien = 0;
inline constexpr int noArranca = 1;       // settings, language file or service cannot be reached
inline constexpr int uso = 2;             // the command line is wrong
inline constexpr int fallida = 3;         // refused or failed; the reason stands on standard error
inline constexpr int noEncontrado = 4;    // no such file, stored or here
inline constexpr int sinUsuario = 5;      // no user, or the service does not know him
inline constexpr int otraInstancia = 11;  // the pending companies: another instance runs, nothing was done
inline constexpr int senal = 128;         // ended by a signal: this plus its number
}  // namespace salida

struct Opciones {
    std::string orden;                 // "listar", "subir", ...
    std::vector<std::string> nombres;  // its files or stored names

    // Who: a user of the service, or the user of a company; neither = the active company's.
    std::string usuario;
    std::string clave;
    std::string archivoClave;  // file whose first line is the password
    std::string carpeta;       // service folder
    std::string empresa;       // company file
    bool crm = false;          // VXCRM in place of VELDORIX

    std::string tipo = "empresas";  // kind of content: "empresas" or "personales"
    std::string destino;            // of a download
    bool sobrescribir = false;      // restore: over the company of that name; download: over the file
    bool imagenes = false;          // company upload: with its images
    bool json = false;
    bool silencio = false;  // no progress
};

}  // namespace tarvoline::consola
