// The line to the accounting service: login, what is sent, how answers are judged.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "link/remoto/formas.h"
#include "link/sesion.h"
#include "soap/cliente.h"

namespace tarvoline::link::remoto {

class Cliente {
  public:
    explicit Cliente(const Sesion& sesion) : sesion_(sesion) {}

    // "" when the user is in; else what the service answered, which is its refusal. Throws ErrorEnlace
    // noDisponible for a user who may not come this way.
    std::string entrar(std::string_view usuario, std::string_view clave, std::string_view direccion);

    // What the service answered. An answer that begins with ERROR throws ErrorEnlace under this number.
    using Numero = std::uint32_t;
    // `empresa`: "" is that of the session.
    std::string simple(std::string_view operacion, std::string_view empresa, std::string_view valor,
                       Numero numero = error_enlace::noDisponible);
    std::string conCampos(std::string_view operacion, const std::vector<std::string>& elementos,
                          Numero numero = error_enlace::noDisponible);
    std::string enviar(const std::string& forma, Numero numero = error_enlace::noDisponible);
    // Table operations, on a table by its name there. `filtro`: data/filtro.h; `cambios`: cambioDeCampo.
    std::string buscar(std::string_view archivo, std::string_view filtro, std::string_view empresa = {});
    std::string cambiar(std::string_view archivo, std::string_view cambios);
    void cambiarFiltradas(std::string_view archivo, std::string_view filtro, std::string_view cambios);
    void borrarFiltradas(std::string_view archivo, std::string_view filtro);

    // Of the session's company, or of none.
    Remite remite() const;

    bool esAdministrador() const { return tipo_ == "00"; }
    const std::string& carpetaPropia() const { return carpetaPropia_; }
    std::string CARPETA;  // folder in force; "": that of the user

  private:
    Remite remiteDe(std::string_view empresa) const;

    const Sesion& sesion_;
    std::optional<soap::Conexion> conexion_;
    std::optional<soap::ClienteSoap> soap_;
    bool conectado_ = false;  // the client has been initialised
    std::string token_, tipo_, carpetaPropia_;
    std::vector<std::string> datosEntrada_;  // the fields of the login's answer
};

bool esError(std::string_view respuesta);

}  // namespace tarvoline::link::remoto
