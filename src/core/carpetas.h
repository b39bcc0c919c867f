// The folders of the program, and how a path comes apart.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/ajustes.h"
#include "platform/archivos.h"

namespace tarvoline::core {

struct PartesRuta {
    std::string directorio;  // with its final separator; "" when there is none
    std::string nombre;      // without extension
    std::string extension;   // without point; "" when there is none
};

// Splits at the last separator ("\" or "/") and the last point behind it.
PartesRuta SepararRuta(std::string_view ruta);
std::string SoloNombre(std::string_view ruta);  // name with extension
bool contieneSeparador(std::string_view ruta);
std::string conSeparadorFinal(std::string_view carpeta);  // "" stays ""
// A path from the root or with a drive stays; any other is taken from the process's current folder ("" is
// that folder). Opening a company moves the process, so a path that somebody gave is made whole before that.
std::string rutaCompleta(std::string_view ruta);

// Folders that the system keeps for application data.
enum class CarpetaConocida {
    datosLocales,      // of the user, on this machine
    datosItinerantes,  // of the user, along with the settings
    datosComunes       // of all users
};

class Carpetas {
  public:
    // `raizTemporal` is the folder below which "Veldorix" is made (platform::carpetaTemporal()).
    Carpetas(platform::SistemaArchivos& archivos, Ajustes& ajustes, std::string raizTemporal);
    // For a program that stands in another folder than the running one (tests).
    Carpetas(platform::SistemaArchivos& archivos, Ajustes& ajustes, std::string raizTemporal,
             std::string carpetaEjecutable);

    // The program's temporary folder (made when missing, readable by its user only) and `resto` behind it,
    // with one separator between them. The empty name gives the folder without final separator. A folder that
    // cannot be made is no error here: whoever opens a file in it gets one.
    std::string CarpetaTemporal(std::string_view resto = {}) const;
    // CarpetaTemporal("\Tarvoline\"), made when missing: where archives wait and downloads land.
    std::string carpetaTransferencia() const;
    // The folder `primera`; `segunda` where the system has none that this user may write in ("" when it has
    // neither). Without final separator.
    std::string CarpetaEspecial(CarpetaConocida primera, CarpetaConocida segunda) const;
    // "QZ/Veldorix/5" of the user's data folder, or of the one that all users share (of the user's settings
    // folder where that one cannot be written), made when missing; `nombre` behind it.
    std::string CarpetaUsuario(std::string_view nombre = {}) const;
    std::string CarpetaComun(std::string_view nombre = {}) const;
    // Setting "Directory"; without one "../share/tarvoline/" beside the folder of the running program where
    // that exists, else the program's folder itself. With final separator.
    std::string DirectorioPrograma() const;
    // The window's program, to be started again: the one in the program directory or beside the running one,
    // else the running one itself.
    std::string rutaPrograma() const;
    // Makes the folder with its parents; errors are ignored.
    void CrearDirectorios(std::string_view ruta) const;
    // Makes DATOS_DIR (for "VXCRM") or Directory the process's current directory; errors are ignored.
    void PonerDirectorioDatos(std::string_view producto) const;
    // True when the file opens for reading.
    bool ArchivoExiste(std::string_view ruta) const;

  private:
    std::optional<std::string> carpetaConocida(CarpetaConocida cual) const;

    platform::SistemaArchivos& archivos_;
    Ajustes& ajustes_;
    std::string raizTemporal_;
    std::string carpetaEjecutable_;
};

}  // namespace tarvoline::core
