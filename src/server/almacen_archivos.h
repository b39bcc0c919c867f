// The users' files: pieces are written at their positions, read back, listed and deleted.
//
// On disk a file is `<data folder>/<user's root>/<id>`, whatever it is called. What makes it safe:
//   1. The length of a stored file is that of the file on disk, never a figure kept beside it: whenever the
//      process ends, the stored length is what was written.
//   2. A row is written before its file is made, and a file deleted before its row: a row without a file is
//      no stored file, and there are no files without a row.
//   3. A piece that would leave a hole is refused; a piece that failed half-way is cut off again.
//   4. What was written is synchronised with the disk when a file's last piece arrives (it is shorter than
//   the
//      others), when the user's history line arrives, every few seconds in the background, and at the end.
// Thread-safe: writers of one file take turns, different files go side by side.
#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/registro.h"
#include "platform/archivos.h"
#include "server/base_datos.h"
#include "server/indice_archivos.h"
#include "soap/valores.h"

namespace tarvoline::server {

class AlmacenArchivos {
  public:
    static constexpr std::size_t maximoPieza = 262145;      // bytes that one Backup may bring
    static constexpr std::int32_t maximoLectura = 1 << 20;  // bytes that one Restore may ask
    static constexpr std::size_t maximoArchivos = 100000;   // of one user

    // Reads what is stored. Throws ErrorServidor and platform::ErrorArchivo.
    AlmacenArchivos(platform::SistemaArchivos& archivos, BaseDatos& base, core::Registro& registro,
                    std::string carpetaDatos);

    // Each answers "" or a text that begins with "ERROR" (server/textos.h). Positions count from 1.
    //
    // Position 1 starts the file anew. At position 1 a piece of at most 262144 bytes whose last byte is zero
    // is a whole small file, stored without that byte.
    std::string guardarPieza(const Ubicacion& ubicacion, std::span<const std::byte> bytes,
                             std::int32_t posicion, const Cupo& cupo);
    // Fewer bytes at the end of the file, none behind it.
    std::string leerPieza(const Ubicacion& ubicacion, std::int32_t posicion, std::int32_t cuantos,
                          soap::Bytes& bytes);
    std::string eliminar(const Ubicacion& ubicacion);

    const IndiceArchivos& indice() const { return indice_; }

    // Brings what was written to the disk: of one user, or of all.
    void sincronizar(std::int64_t usuario);
    void sincronizarTodo();

  private:
    struct Tramo {
        std::span<const std::byte> bytes;
        std::int64_t desde = 0;  // from 0
        bool nuevo = false;      // starts the file
        bool ultimo = false;     // nothing follows
    };
    void cargar();
    GuardadoLeido crear(const Ubicacion& ubicacion);
    std::string escribir(Guardado& guardado, const Tramo& tramo, const Cupo& cupo);
    void volcar(Guardado& guardado, const Tramo& tramo, bool& empezado);
    void sincronizarEstos(const std::vector<GuardadoLeido>& cuales);

    platform::SistemaArchivos& archivos_;
    BaseDatos& base_;
    core::Registro& registro_;
    std::string carpetaDatos_;
    IndiceArchivos indice_;
    std::mutex cerrojoAltas_;
    std::mutex cerrojoPendientes_;
    std::set<GuardadoLeido> pendientes_;  // written since they were last synchronised
};

}  // namespace tarvoline::server
