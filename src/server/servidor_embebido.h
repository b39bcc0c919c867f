// The backup service as an object: a program around it is tarvoline-servicio, a test starts it in its own
// process.
#pragma once

#include <memory>
#include <string>

#include "core/registro.h"
#include "platform/archivos.h"
#include "platform/reloj.h"
#include "server/almacen_usuarios.h"
#include "server/opciones.h"

namespace tarvoline::server {

class ServidorEmbebido {
  public:
    // Opens the store. What is referred to outlives the service. Throws ErrorServidor, also when another
    // service holds the same root, and platform::ErrorArchivo.
    ServidorEmbebido(OpcionesServicio opciones, platform::SistemaArchivos& archivos,
                     const platform::Reloj& reloj, core::Registro& registro);
    ~ServidorEmbebido();  // as detener()
    ServidorEmbebido(const ServidorEmbebido&) = delete;
    ServidorEmbebido& operator=(const ServidorEmbebido&) = delete;

    // Listens, in threads of its own, and returns once calls are answered. Throws ErrorServidor when a port
    // cannot be had, or when it would listen beyond loopback without encryption and that was not asked for.
    void arrancar();
    // No new calls; running ones are answered, and all that was written is brought to the disk. Then
    // arrancar() is over for good. Harmless when called twice.
    void detener();

    int puerto() const;     // plain port
    int puertoTls() const;  // 0 without a certificate
    // "http://127.0.0.1:PORT/qzback/service.asmx?wsdl"
    std::string url() const;
    AlmacenUsuarios& usuarios();

  private:
    class Interior;
    std::unique_ptr<Interior> interior_;
};

}  // namespace tarvoline::server
