// The backup service as a library: each operation with typed arguments, under one user's identity. No boxes,
// no state, no settings. A result may be a text that begins with "ERROR"; anything raised is
// soap::ErrorServicio.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/credencial.h"
#include "soap/cliente.h"

namespace tarvoline::service {

// Who calls, and where his files are.
struct Identidad {
    std::string usuario;
    std::string password;
    std::string carpeta;
    std::string cuenta;  // account code, upper case
};

// A client of the service for one routine: made (and its WSDL read) at the start of the routine, dropped at
// its end. Each operation takes a fresh one-time credential first (one more client and a call of DTS), then
// calls. File names are escaped on the way out.
class ClienteServicio {
  public:
    // Reads the WSDL. Throws soap::ErrorServicio.
    ClienteServicio(soap::Conexion& conexion, std::string url,
                    core::FuenteAleatoria fuente = core::fuenteAleatoria());

    // A new credential from `clave`, good for one call.
    std::string CredencialServicio(std::string_view clave);
    const std::string& detail() const { return cliente_.detail(); }

    std::string DatosUsuario(const Identidad& quien);
    std::string Carpetaraizusuario(const Identidad& quien);
    std::string ActualizaNserie(std::string_view carpetaCorta, std::string_view codigo);  // no credential
    std::string listadocarpetas(const Identidad& quien);
    std::string ListadoArchivos(const Identidad& quien, std::string_view tipo);
    std::string FileSize(const Identidad& quien, std::string_view tipo, std::string_view nombre);
    // `posicion` counts from 1.
    std::string Backup(const Identidad& quien, std::string_view tipo, std::string_view nombre,
                       soap::Bytes bytes, std::int32_t posicion);
    std::string Restore(const Identidad& quien, std::string_view tipo, std::string_view nombre,
                        std::int32_t posicion, std::int32_t cuantos, soap::Bytes& bytes);
    std::string EliminarArchivo(const Identidad& quien, std::string_view tipo, std::string_view nombre);
    std::string CalcularEspacioTotal(const Identidad& quien);
    std::string CarpetasNserie(std::string_view codigo);  // no credential
    std::string GrabarHistorico(const Identidad& quien, std::string_view texto);
    std::string LeerHistorico(const Identidad& quien, std::string_view filtro);
    bool ofreceCapacidad() const { return cliente_.ofrece("CapacidadContratada"); }
    std::string CapacidadContratada(const Identidad& quien);

  private:
    soap::Conexion& conexion_;
    std::string url_;
    core::FuenteAleatoria fuente_;
    soap::ClienteSoap cliente_;
};

// Trimmed field 2 of the first record that has one, or of the last record read: the user's account code.
std::string codigoDeDatosUsuario(std::string_view resultado);

struct UsuarioCuenta {
    std::string usuario, password, etiqueta;
};
// The records of CarpetasNserie; blank ones are left out.
std::vector<UsuarioCuenta> leerUsuariosCuenta(std::string_view resultado);

}  // namespace tarvoline::service
