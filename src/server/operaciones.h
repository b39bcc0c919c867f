// The operations of the service: who may call them, and what they answer. No HTTP and no XML here.
//
// Results have the grammar that clients read: records separated by "|", fields by "-", names by a tab,
// history fields by "@/"; a text that begins with "ERROR" is a failure. Thread-safe.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include "core/registro.h"
#include "server/almacen_archivos.h"
#include "server/almacen_usuarios.h"
#include "server/credenciales.h"
#include "server/historial.h"
#include "soap/servidor.h"

namespace tarvoline::server {

class Operaciones {
  public:
    Operaciones(AlmacenUsuarios& usuarios, AlmacenArchivos& archivos, Historial& historial,
                const platform::Reloj& reloj, core::Registro& registro);

    // Answers a request that came from `direccion` and writes its by-reference arguments. Throws
    // ErrorServidor when the store fails.
    std::string llamar(soap::PeticionSoap& peticion, const std::string& direccion);

  private:
    struct Llamada;
    struct Entrada;
    using Metodo = std::string (Operaciones::*)(Llamada&);
    static const std::map<std::string_view, Entrada>& tabla();

    std::string identificar(Llamada& llamada);
    std::string rechazar(const Llamada& llamada, const char* texto);
    std::string ubicar(const Llamada& llamada, std::size_t primero, Ubicacion& ubicacion);
    Cupo cupo(const Usuario& usuario);

    std::string DTS(Llamada& llamada);
    std::string DatosUsuario(Llamada& llamada);
    std::string Carpetaraizusuario(Llamada& llamada);
    std::string ActualizaNserie(Llamada& llamada);
    std::string listadocarpetas(Llamada& llamada);
    std::string ListadoArchivos(Llamada& llamada);
    std::string FileSize(Llamada& llamada);
    std::string Backup(Llamada& llamada);
    std::string Restore(Llamada& llamada);
    std::string EliminarArchivo(Llamada& llamada);
    std::string CalcularEspacioTotal(Llamada& llamada);
    std::string CarpetasNserie(Llamada& llamada);
    std::string GrabarHistorico(Llamada& llamada);
    std::string LeerHistorico(Llamada& llamada);
    std::string CapacidadContratada(Llamada& llamada);

    bool algunoIdentificado(std::string_view cuenta, const std::string& direccion);
    void recordarCarpeta(std::int64_t usuario, const std::string& carpeta);

    AlmacenUsuarios& usuarios_;
    AlmacenArchivos& archivos_;
    Historial& historial_;
    core::Registro& registro_;
    Credenciales credenciales_;
    Identificados identificados_;
    FrenoFallos freno_;
    std::mutex cerrojoCarpetas_;
    std::map<std::int64_t, std::string> ultimaCarpeta_;  // by user: where he last wrote, read or deleted
};

}  // namespace tarvoline::server
