// The service's lists as the views show them, and the small operations on the current user and his files.
//
// "Failure" below is a text of the service that begins with "ERROR". A raised error goes up to the entry that
// started the work, unless the routine says what it does with one.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

// What the service answers when the user has no access key: nobody is logged in yet.
inline constexpr std::string_view errorSinClave = "ERROR:Es obligatorio asignar una clave de acceso";

class Listados : public Flujo {
  public:
    using Flujo::Flujo;

    // Kind of the view: "VELDORIX", "PERSONAL", "VXCRM"; "" on the history. Keeps gProducto in step, but for
    // the history.
    std::string VistaActual();
    // Reads the list of the view again; does nothing in the unattended run.
    void RefrescarVista();
    // Fills List1 and the grid. When nobody is logged in it asks for the login; any other failure empties
    // List1 and is shown, and so is a raised error.
    void ListarArchivos(std::string_view tipo);
    // Nothing on show.
    void vaciarLista();
    // Reads the folder list and settles which folder is in force. A failure is shown.
    void LlenarCarpetas();
    // Adds the folders that the list does not have yet. A failure is no news.
    void AnadirCarpetasNuevas();

    // Upper case; "" when the user has none, or on a failure, which is shown.
    std::string CodigoCuentaDeUsuario();
    // False on a failure, which is shown.
    bool ValidarUsuario(std::string_view usuario, std::string_view clave);
    // Ties the root folder of the user in force to an account code. Its answer is not looked at.
    void ActualizarCodigoCuenta(std::string_view codigo);
    // Short name of the user's root folder, upper case; "" on a failure or an error.
    std::string CarpetaRaizUsuario();

    // True when it is gone. A failure is shown and the list of the view read again.
    bool EliminarArchivoServidor(std::string_view tipo, std::string_view nombre);
    // Size in bytes; -1 when it could not be had, which was shown.
    double TamanoArchivo(std::string_view tipo, std::string_view nombre);
    // Sum of the selected rows to the label `Tamaño`.
    void TamanoSeleccion();
    // Sizes of all rows to columns 5 and 7 and their sum to the label lbtotalocupado, with a turn for the
    // window after each. A raised error is shown once and ends it; a file whose size the service refuses
    // keeps its cells empty.
    void ActualizaTamanoFila();
    // Whether that is under way, and its end after the row it is at: a person need not wait for it to do
    // something else. The rows that it did not reach keep their cells empty until it is taken up again. The
    // Stop ends it for good.
    bool midiendoTamanos() const { return midiendo_; }
    void dejarDeMedir() { dejarDeMedir_ = true; }
    bool quedanTamanos() const { return dejarDeMedir_ && !midiendo_; }
    void retomarTamanos();
    // Whether the grid lacks the size of its first row.
    bool faltanTamanos() const;

    // The handlers of the view selector, the option buttons, the folder list and the size button. While
    // gInicio is up the first three only note what was chosen.
    void elegirVista(core::Opcion opcion) { Option1_Click(static_cast<int>(opcion)); }
    void Option1_Click(int indice);
    void carpetas_Click(int indice);
    void Command1_Click();

  private:
    std::optional<std::int32_t> pedirTamano(std::string_view tipo, std::string_view nombre);
    std::optional<std::int32_t> pedirTamanoDeFila(std::string_view tipo, const std::string& nombre);
    void medirFilas(bool soloLasQueFaltan);
    bool ponerTamanos(bool soloLasQueFaltan);
    std::vector<std::string> nombresDeFilas() const;
    int filaDe(const std::string& nombre, int cerca) const;
    void elegirCarpeta(const std::vector<std::string>& nombres, int recordada);

    bool midiendo_ = false;
    bool dejarDeMedir_ = false;
    std::set<std::string> sinTamano_;  // said once: taking the measuring up again does not ask for these
};

}  // namespace tarvoline::workflows
