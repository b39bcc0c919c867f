// The accounting link of the service: who may come in, and what the forms do to the books. No HTTP here.
// docs/remote-link.md.
//
// Books lie in the folder "contabilidad" of the service's root, a folder for each user, as the files of
// copies have; the text that answers a form begins with "ERROR" when it failed. Thread-safe; a session does
// one form at a time.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "core/registro.h"
#include "platform/archivos.h"
#include "platform/reloj.h"
#include "server/almacen_usuarios.h"
#include "server/credenciales.h"
#include "server/enlace_forma.h"
#include "server/enlace_mundo.h"
#include "soap/servidor.h"

namespace tarvoline::server {

class OperacionesEnlace {
  public:
    // The one longest unused goes first: that of the user who has too many, or else of all.
    static constexpr std::size_t maximoSesiones = 256;
    static constexpr std::size_t maximoPorUsuario = 16;
    // Forms of one session at a time, and wrong passwords of one address: what comes on top is refused at
    // once, so that nobody holds all threads of the service.
    static constexpr int maximoEsperando = 8;
    static constexpr int maximoFrenados = 4;
    static constexpr std::chrono::hours vidaSesion{8};

    OperacionesEnlace(AlmacenUsuarios& usuarios, platform::SistemaArchivos& archivos, const std::string& raiz,
                      const platform::Reloj& reloj, core::Registro& registro);

    std::string llamar(const soap::PeticionSoap& peticion, const std::string& direccion);

  private:
    using Instante = std::chrono::system_clock::time_point;
    struct Abierta {
        std::shared_ptr<SesionEnlace> sesion;
        Instante usada;
    };
    struct Peticion;
    using Metodo = std::string (OperacionesEnlace::*)(Peticion&);
    static const std::map<std::string_view, Metodo>& tabla();

    std::string ID(const std::string& usuario, const std::string& clave, const std::string& direccion);
    std::string VXWebService(const std::string& xml, const std::string& direccion);
    std::string atender(const FormaEnlace& forma, const std::string& direccion);
    void abrirSesion(const std::string& token, const UsuarioLeido& usuario);
    void caducar();
    // Lets whoever gave a wrong password wait.
    void frenar(const std::string& direccion, const std::string& motivo);
    bool demasiados(const std::string& direccion);
    std::string sinRutas(std::string texto) const;
    std::shared_ptr<SesionEnlace> sesionDe(const std::string& token);
    std::string carpetaDe(const SesionEnlace& sesion, const std::string& pedida);

    std::string LEEREMPRESAS(Peticion& peticion);
    std::string EMPRESAEXISTS(Peticion& peticion);
    std::string CREAREMPRESA(Peticion& peticion);
    std::string GETTOTAL(Peticion& peticion);
    std::string PUTTOTAL(Peticion& peticion);
    std::string LEERTIPOSIVA(Peticion& peticion);
    std::string LEERASIENTO(Peticion& peticion);
    std::string GRABARASIENTO(Peticion& peticion);
    std::string ANULARASIENTO(Peticion& peticion);
    std::string BORRARCUENTA(Peticion& peticion);
    std::string BUSCAR(Peticion& peticion);
    std::string UPDATE(Peticion& peticion);
    std::string FILTERUPDATE(Peticion& peticion);
    std::string FILTERBORRAR(Peticion& peticion);
    std::string GETFECHAS(Peticion& peticion);
    std::string GETASIENTOS(Peticion& peticion);
    std::string GETGUID(Peticion& peticion);
    std::string SETGUID(Peticion& peticion);
    std::string LEERCARPETASVELDORIX2(Peticion& peticion);

    AlmacenUsuarios& usuarios_;
    platform::SistemaArchivos& archivos_;
    std::string raiz_;
    const platform::Reloj& reloj_;
    core::Registro& registro_;
    FrenoFallos freno_;
    std::mutex cerrojo_;
    std::map<std::string, Abierta> sesiones_;  // by token
    std::map<std::string, int> frenados_;      // by address, those that wait
};

// The operations ID and VXWebService.
soap::Contrato contratoEnlace();

}  // namespace tarvoline::server
