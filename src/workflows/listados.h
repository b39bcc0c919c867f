// The service's lists as the views show them, and the small operations on the current user and his files.
#pragma once

#include <string>
#include <string_view>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

// What the service answers when the user has no access key: nobody is logged in yet.
inline constexpr std::string_view errorSinClave = "ERROR:Es obligatorio asignar una clave de acceso";

class Listados : public Flujo {
  public:
    using Flujo::Flujo;

    // Kind of the view: "VELDORIX", "PERSONAL", "VXCRM"; "" on the history. Keeps gProducto in step.
    std::string VistaActual();
    void RefrescarVista();
    void ListarArchivos(std::string_view tipo);
    void LlenarCarpetas();
    void AnadirCarpetasNuevas();

    std::string CodigoCuentaDeUsuario();
    bool ValidarUsuario(std::string_view usuario, std::string_view clave);
    void ActualizarCodigoCuenta(std::string_view codigo);
    // Short name of the user's root folder, upper case; "" on failure.
    std::string CarpetaRaizUsuario();

    // True when it is gone. A failure is shown and the list of the view reloaded.
    bool EliminarArchivoServidor(std::string_view tipo, std::string_view nombre);
    // Size in bytes; -1 when it could not be had (which was shown).
    double TamanoArchivo(std::string_view tipo, std::string_view nombre);
    // Sum of the selected rows to the label `Tamaño`.
    void TamanoSeleccion();
    // Sizes of all rows to columns 5 and 7 and their sum to the label lbtotalocupado.
    void ActualizaTamanoFila();

    // The handlers of the view selector, the option buttons and the folder list.
    void elegirVista(core::Opcion opcion);
    void Option1_Click(int indice);
    void carpetas_Click(int indice);
};

}  // namespace tarvoline::workflows
