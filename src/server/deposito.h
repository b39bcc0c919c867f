// What lies below the service's root: the data base, the key of the passwords, and the users in them. Opened
// by the service and, beside it, by the administrator's command.
#pragma once

#include <string>

#include "platform/archivos.h"
#include "server/almacen_usuarios.h"
#include "server/base_datos.h"
#include "server/cifrado.h"

namespace tarvoline::server {

class Deposito {
  public:
    // Makes what is missing, readable by the owner only. Throws ErrorServidor and platform::ErrorArchivo.
    Deposito(platform::SistemaArchivos& archivos, const std::string& raiz);

    BaseDatos& base() { return base_; }
    AlmacenUsuarios& usuarios() { return usuarios_; }

  private:
    Cifrado cifrado_;
    BaseDatos base_;
    AlmacenUsuarios usuarios_;
};

}  // namespace tarvoline::server
