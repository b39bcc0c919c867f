#include "server/deposito.h"

namespace tarvoline::server {
namespace {

std::string prepararRaiz(platform::SistemaArchivos& archivos, const std::string& raiz) {
    archivos.crearDirectorios(raiz, 0700);
    return raiz + "/clave.bin";
}

// Made empty first: the data base takes over the owner-only rights, for its log beside it too.
std::string prepararBase(platform::SistemaArchivos& archivos, const std::string& raiz) {
    std::string ruta = raiz + "/servicio.sqlite";
    if (!platform::existe(archivos, ruta)) platform::escribirAtomico(archivos, ruta, "", 0600);
    return ruta;
}

}  // namespace

Deposito::Deposito(platform::SistemaArchivos& archivos, const std::string& raiz)
    : cifrado_(archivos, prepararRaiz(archivos, raiz)),
      base_(prepararBase(archivos, raiz)),
      usuarios_(base_, cifrado_) {}

}  // namespace tarvoline::server
