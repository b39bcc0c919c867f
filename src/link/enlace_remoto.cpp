// The members of Enlace for the accounting service.
#include "core/texto.h"
#include "link/enlace_interior.h"

namespace tarvoline::link {

namespace {

[[noreturn]] void soloConServicio() {
    throw ErrorEnlace(error_enlace::soloEnRemoto,
                      "Esta opción solo está disponible con enlace a Veldorix Online");
}

}  // namespace

// From here on the session is remote; it has no company.
void Enlace::Login(std::string_view usuario, std::string_view password, std::string_view ip) {
    Sesion& sesion = interior_->sesion;
    const std::string respuesta = interior_->remotas.cliente().entrar(usuario, password, ip);
    if (remoto::esError(respuesta)) throw ErrorEnlace(error_enlace::entradaRehusada, respuesta, "");
    if (!respuesta.empty()) return;
    // What was collected for one company is not another's.
    sesion.CerrarArchivos(true);
    sesion.ModoRemoto = true;
    sesion.empresa = {};
    LoadEmpresas();
}

bool Enlace::ModoRemoto() const {
    return interior_->sesion.ModoRemoto;
}

const std::string& Enlace::Carpeta() const {
    if (!ModoRemoto()) soloConServicio();
    return interior_->remotas.cliente().CARPETA;
}

void Enlace::Carpeta(std::string_view carpeta) {
    if (!ModoRemoto()) soloConServicio();
    if (!interior_->remotas.cliente().esAdministrador()) {
        throw ErrorEnlace(error_enlace::soloAdministradores,
                          "Esta opción solo está disponible para administradores");
    }
    interior_->remotas.cliente().CARPETA = carpeta;
}

std::vector<std::string> Enlace::LeerCarpetas() {
    if (!ModoRemoto()) soloConServicio();
    return interior_->remotas.LeerCarpetas();
}

}  // namespace tarvoline::link
