#include "link/remoto/cliente.h"

#include <algorithm>
#include <array>

#include "core/texto.h"

namespace tarvoline::link::remoto {

namespace {

constexpr std::string_view contrato = "/vxenlace.asmx?wsdl";

// Places in the answer to a login.
constexpr std::size_t lugarToken = 0, lugarTipo = 2, lugarCarpeta = 3, camposEntrada = 6;
constexpr std::string_view ultimoTipo = "01";

// A search may find the whole journal of a large company.
constexpr std::size_t respuestaMaxima = std::size_t{128} * 1024 * 1024;

std::string direccionCompleta(std::string_view direccion) {
    std::string completa = core::Recortar(direccion);
    if (completa.find("://") == std::string::npos) completa.insert(0, "http://");
    while (completa.ends_with('/'))
        completa.pop_back();
    return completa + std::string(contrato);
}

}  // namespace

bool esError(std::string_view respuesta) {
    constexpr std::string_view marca = "ERROR";
    return core::igualSinCaja(respuesta.substr(0, marca.size()), marca);
}

std::string Cliente::entrar(std::string_view usuario, std::string_view clave, std::string_view direccion) {
    if (!conectado_) {
        if (!conexion_) conexion_.emplace(soap::OpcionesTransporte{.respuestaMaxima = respuestaMaxima});
        if (!soap_) soap_.emplace(*conexion_);
        soap_->Iniciar(direccionCompleta(direccion), "", "", "");
        conectado_ = true;
    }
    std::array<soap::Valor, 2> argumentos{std::string(usuario), std::string(clave)};
    std::string respuesta = soap_->Llamar("ID", argumentos);
    if (respuesta.find('\t') == std::string::npos) return respuesta;
    auto campos = core::Partir(respuesta, "\t");
    campos.resize(std::max(campos.size(), camposEntrada));
    if (campos[lugarTipo] > ultimoTipo) {
        throw ErrorEnlace(
            error_enlace::noDisponible,
            "Solo administradores o usuarios limitados (tipo 01) pueden acceder al web service");
    }
    datosEntrada_ = std::move(campos);
    token_ = datosEntrada_[lugarToken];
    tipo_ = datosEntrada_[lugarTipo];
    carpetaPropia_ = datosEntrada_[lugarCarpeta];
    CARPETA.clear();
    return {};
}

Remite Cliente::remite() const {
    return {token_, CARPETA, sesion_.empresa.gEmpresaActual};
}

Remite Cliente::remiteDe(std::string_view empresa) const {
    Remite quien = remite();
    if (!empresa.empty()) quien.empresa = empresa;
    return quien;
}

std::string Cliente::enviar(const std::string& forma, Numero numero) {
    std::array<soap::Valor, 2> argumentos{forma, std::string()};
    std::string respuesta = soap_->Llamar("VXWebService", argumentos);
    if (esError(respuesta)) throw ErrorEnlace(numero, respuesta);
    return respuesta;
}

std::string Cliente::simple(std::string_view operacion, std::string_view empresa, std::string_view valor,
                            Numero numero) {
    return enviar(formaSimple(remiteDe(empresa), operacion, "", valor), numero);
}

std::string Cliente::conCampos(std::string_view operacion, const std::vector<std::string>& elementos,
                               Numero numero) {
    return enviar(formaCampos(remite(), operacion, elementos), numero);
}

std::string Cliente::buscar(std::string_view archivo, std::string_view filtro, std::string_view empresa) {
    return enviar(formaCampos(remiteDe(empresa), "BUSCAR",
                              {elementoEntero("FILTER", filtro), "ARCHIVO=" + std::string(archivo)}));
}

std::string Cliente::cambiar(std::string_view archivo, std::string_view cambios) {
    return conCampos("UPDATE", {elementoEntero("CAMPOS", cambios), "ARCHIVO=" + std::string(archivo)},
                     error_enlace::errorIndexados);
}

void Cliente::cambiarFiltradas(std::string_view archivo, std::string_view filtro, std::string_view cambios) {
    conCampos("FILTERUPDATE", {elementoEntero("FILTER", filtro), elementoEntero("CAMPOS", cambios),
                               "ARCHIVO=" + std::string(archivo)});
}

void Cliente::borrarFiltradas(std::string_view archivo, std::string_view filtro) {
    conCampos("FILTERBORRAR", {elementoEntero("FILTER", filtro), "ARCHIVO=" + std::string(archivo)});
}

}  // namespace tarvoline::link::remoto
