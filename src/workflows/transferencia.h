// Files up and down, with the record that lets an upload survive the end of the program.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Transferencia : public Flujo {
  public:
    using Flujo::Flujo;

    // What the service answered last ("" when nothing came), "NO" when there was no room, or the text of a
    // failure, which begins with "ERROR". `posicion` counts from 1.
    std::string SubirArchivo(std::string_view archivo, std::string_view tipo, bool mostrar,
                             std::int32_t posicion);
    // Goes on with the upload that the settings record. Does not restart the program: the caller looks at
    // gInterrumpido.
    std::string ContinuarSubida();
    // The file of the current row. True when the whole of it is there.
    bool DescargarArchivo(std::string_view tipo, std::string_view destino);
    // The file that `destino` names, without a dialog; opened when it is there.
    bool AbrirArchivoServicio(std::string_view tipo, std::string_view destino);

    // Calls of Backup that the last SubirArchivo sent.
    int piezasEnviadas() const { return piezasEnviadas_; }

    void CrearAcceso();
    void QuitarAccesoInicio();
    // Empties the keys of the recorded upload.
    void borrarRegistroSubida();

  private:
    int piezasEnviadas_ = 0;
};

}  // namespace tarvoline::workflows
