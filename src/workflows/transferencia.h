// Files up and down, with the record that lets an upload survive the end of the program.
//
// The record of an upload lies in section NETBACKUP of the settings, under gProducto: `Active` (path of the
// local file; empty = no upload), `Offset` (position of the next piece, from 1), `Carpeta` (the kind),
// `User`, `Password`, and with them `CarpetaDestino` (service folder) and `Cuenta` (account code). Its states
// and who changes them: docs/transferencia.md.
//
// Who may delete an archive: from its first step to its last, SubirArchivo keeps a handle on the archive of a
// company open with Comparticion::compartida. Whoever clears the transfer folder therefore opens a file with
// Comparticion::exclusiva before he deletes it, and leaves one alone that is refused. Personal files are the
// person's own and are open only while a piece is read.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "service/piezas.h"
#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Transferencia : public Flujo {
  public:
    using Flujo::Flujo;

    // Sends `archivo` as kind `tipo` under the user in force, from `posicion` (counted from 1) on. Returns
    // what the service answered last ("" when nothing came), "NO" when there was no room, or a text that
    // begins with "ERROR": the service's own, or text 1250 and what was raised. Whatever the service answered
    // the record is emptied and the archive of a company's own kind deleted; after a raised error both stay
    // for the next start. Raises gInterrumpido for "NO" and for a stop, and clears gDetener. `mostrar`
    // switches the name and progress labels on. A file that grows or shrinks meanwhile is sent with the
    // length it had at the beginning, filled up with zeros.
    std::string SubirArchivo(std::string_view archivo, std::string_view tipo, bool mostrar,
                             std::int32_t posicion);
    // Goes on with the upload that the settings record, under its own user, folder and account. Does not
    // restart the program: the caller looks at gInterrumpido.
    std::string ContinuarSubida();
    // Receives the file of the current row into `destino`, or where the person says when it is empty. True
    // when the whole of it is there. A stop deletes what came. A failure of the service while pieces come is
    // not told: it leaves a shorter file.
    bool DescargarArchivo(std::string_view tipo, std::string_view destino);
    // Receives the file that `destino` names, without a dialog, and opens it when it is there.
    bool AbrirArchivoServicio(std::string_view tipo, std::string_view destino);

    // Calls of Backup that the last SubirArchivo began.
    int piezasEnviadas() const { return envio_.piezas; }

    // The entry that starts the program at the next logon. Errors are ignored.
    void CrearAcceso();
    void QuitarAccesoInicio();
    // Empties the keys of the recorded upload.
    void borrarRegistroSubida();

  private:
    std::string subir(std::string_view archivo, std::string_view tipo, bool mostrar, std::int32_t posicion,
                      std::optional<service::ClienteServicio>& cliente);
    void enviar(service::ClienteServicio& cliente, const service::Envio& envio, bool mostrar);
    void avisarCambio(const service::Envio& envio);
    void terminarSubida(std::string_view archivo, std::string_view tipo);
    void anotarSubida(std::string_view archivo, std::string_view tipo, std::int32_t posicion);
    void grabarClave(std::string_view clave, std::string_view valor);
    void grabarPosicion(std::string_view valor);
    void anotando(std::string_view clave, std::string_view valor, const std::function<void()>& paso);
    std::string leerClave(std::string_view clave) const;

    bool pedirDestino(const std::string& nombre, std::string& ruta);
    bool recibir(service::Recepcion recepcion, std::string_view destino, bool borrarSinEmpezar);
    std::optional<std::int32_t> pedirLongitud(service::ClienteServicio& cliente,
                                              const service::Recepcion& recepcion);
    service::ResultadoPiezas recibirPiezas(service::ClienteServicio& cliente,
                                           const service::Recepcion& recepcion, std::string_view destino);

    service::ResultadoPiezas envio_;
    bool avisadoAjustes_ = false;  // a store that cannot be written is told once an upload
};

}  // namespace tarvoline::workflows
