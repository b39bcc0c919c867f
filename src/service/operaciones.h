// The backup service as a library: each operation with typed arguments, under one user's identity. No boxes,
// no state, no settings.
//
// The service reports a failure of its own in the result, as a text that begins with "ERROR"
// (core::esError); every other failure (no network, an unreadable WSDL, a fault, a broken reply) is raised as
// soap::ErrorServicio. Arguments travel by position: parameter names of the WSDL are free.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/credencial.h"
#include "service/respuestas.h"
#include "soap/cliente.h"

namespace tarvoline::service {

// Who calls, and where his files are.
struct Identidad {
    std::string usuario;
    std::string password;
    std::string carpeta;  // folder of the user on the service
    std::string cuenta;   // account code, upper case
};

// A client of the service for one routine: made (and its WSDL read) at the start of the routine, dropped at
// its end. An operation first takes a fresh one-time credential, which costs one more client and a call of
// `DTS`, then calls; so no credential travels twice. File names are escaped on the way out.
class ClienteServicio {
  public:
    // Reads the WSDL. `fuente` yields the filler of the credentials; copies of one source share their
    // generator. Throws soap::ErrorServicio. `conexion` is borrowed.
    ClienteServicio(soap::Conexion& conexion, std::string url,
                    core::FuenteAleatoria fuente = core::fuenteAleatoria());

    // A new credential from `clave`, good for one call.
    std::string CredencialServicio(std::string_view clave);
    // Fault detail of the last failed call of an operation; "" when it was no fault.
    const std::string& detail() const { return cliente_.detail(); }

    std::string DatosUsuario(const Identidad& quien);
    std::string Carpetaraizusuario(const Identidad& quien);
    std::string ActualizaNserie(std::string_view carpetaCorta, std::string_view codigo);  // no credential
    std::string listadocarpetas(const Identidad& quien);
    std::string ListadoArchivos(const Identidad& quien, std::string_view tipo);
    std::string FileSize(const Identidad& quien, std::string_view tipo, std::string_view nombre);
    // Sends all of `bytes`, to be stored from `posicion` on, which counts from 1. The buffer comes back with
    // its content, so that a loop needs one only.
    std::string Backup(const Identidad& quien, std::string_view tipo, std::string_view nombre,
                       soap::Bytes& bytes, std::int32_t posicion);
    // Fills `bytes` with what the service gives for `cuantos` bytes from `posicion` on.
    std::string Restore(const Identidad& quien, std::string_view tipo, std::string_view nombre,
                        std::int32_t posicion, std::int32_t cuantos, soap::Bytes& bytes);
    std::string EliminarArchivo(const Identidad& quien, std::string_view tipo, std::string_view nombre);
    std::string CalcularEspacioTotal(const Identidad& quien);
    std::string CarpetasNserie(std::string_view codigo);  // no credential
    std::string GrabarHistorico(const Identidad& quien, std::string_view texto);
    std::string LeerHistorico(const Identidad& quien, std::string_view filtro);

    // Whether the service tells contracted capacities, and the one of `codigo` in GB, decimal digits.
    bool ofreceCapacidad() const { return cliente_.ofrece("CapacidadContratada"); }
    std::string CapacidadContratada(const Identidad& quien, std::string_view codigo);

  private:
    // The operation with user and fresh credential in front of `resto`, whose by-reference values come back.
    std::string llamar(std::string_view operacion, const Identidad& quien, std::vector<soap::Valor>& resto);
    std::string llamar(std::string_view operacion, const Identidad& quien, std::vector<soap::Valor>&& resto) {
        return llamar(operacion, quien, resto);
    }

    soap::Conexion& conexion_;
    std::string url_;
    core::FuenteAleatoria fuente_;
    soap::ClienteSoap cliente_;
};

}  // namespace tarvoline::service
