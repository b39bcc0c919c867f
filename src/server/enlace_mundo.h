// A session of the accounting link: a user, and the books of the folder that he is at, one company at a time.
#pragma once

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "core/ajustes.h"
#include "core/carpetas.h"
#include "core/registro.h"
#include "platform/archivos.h"
#include "platform/reloj.h"
#include "server/almacen_usuarios.h"
#include "tarvoline/enlace.h"

namespace tarvoline::server {

// The link on the companies of one folder, with settings of its own.
class MundoEnlace {
  public:
    // `carpeta` is made when missing, with copies of the shared files of the program directory.
    MundoEnlace(platform::SistemaArchivos& archivos, core::Registro& registro, std::string carpeta);
    ~MundoEnlace();

    link::Enlace& enlace() { return *enlace_; }
    const std::string& carpeta() const { return carpeta_; }
    // Path of a company by its name, with or without extension, in whatever case; "" when there is none.
    std::string ruta(std::string_view empresa) const;
    // The first box that the books would have shown since it was last emptied: nobody sees one here, and what
    // it tells is that something went wrong without an error.
    std::string& mostrado() { return mostrado_; }

  private:
    platform::SistemaArchivos& archivos_;
    std::string carpeta_;
    std::unique_ptr<platform::Reloj> reloj_;
    std::unique_ptr<platform::ArbolAjustes> arbol_;
    core::Ajustes ajustes_;
    core::Carpetas carpetas_;
    std::string mostrado_;
    link::Contexto contexto_;
    std::unique_ptr<link::Enlace> enlace_;
};

class SesionEnlace {
  public:
    // `raiz`: the folder that holds those of the users, with a final separator.
    SesionEnlace(platform::SistemaArchivos& archivos, core::Registro& registro, std::string raiz,
                 UsuarioLeido usuario)
        : archivos_(archivos), registro_(registro), raiz_(std::move(raiz)), usuario_(std::move(usuario)) {}

    // One request at a time; how many wait or are at it.
    std::mutex cerrojo;
    std::atomic<int> esperando = 0;

    const Usuario& usuario() const { return *usuario_; }
    // The books of that folder, "" that of the user.
    MundoEnlace& mundo(const std::string& carpeta);
    // A company of it, opened. Throws link::ErrorEnlace. One that is protected must have been unlocked
    // before.
    link::Enlace& empresa(const std::string& carpeta, const std::string& nombre);
    enum class Puerta { noEsta, abierta, cerrada };
    // Tries the password; with the right one the company is unlocked.
    Puerta desbloquear(const std::string& carpeta, const std::string& nombre, const std::string& clave);
    // The next form opens its company anew.
    void soltar() { abierta_.clear(); }
    // The first box of the form under way, "" when there was none.
    std::string mostrado() const { return mundo_ ? mundo_->mostrado() : std::string(); }
    void olvidarMostrado() const {
        if (mundo_) mundo_->mostrado().clear();
    }
    // The password that it has been unlocked with ("" for one without); nothing when it is locked.
    std::optional<std::string> claveConocida(const std::string& carpeta, const std::string& nombre) const;

  private:
    void abrir(MundoEnlace& suyo, const std::string& ruta, const std::string& clave);

    platform::SistemaArchivos& archivos_;
    core::Registro& registro_;
    std::string raiz_;
    UsuarioLeido usuario_;
    std::unique_ptr<MundoEnlace> mundo_;
    std::string abierta_;  // path
    std::map<std::string, std::string>
        claves_;  // of the companies that have been unlocked, by folder and name
};

}  // namespace tarvoline::server
