#include "service/operaciones.h"

#include <utility>

namespace tarvoline::service {

using soap::Valor;

namespace {

Valor nombreEscapado(std::string_view nombre) {
    return core::CodificarNombre(nombre);
}

Valor texto(std::string_view valor) {
    return std::string(valor);
}

}  // namespace

ClienteServicio::ClienteServicio(soap::Conexion& conexion, std::string url, core::FuenteAleatoria fuente)
    : conexion_(conexion), url_(std::move(url)), fuente_(std::move(fuente)), cliente_(conexion) {
    cliente_.Iniciar(url_, "", "", "");
}

std::string ClienteServicio::CredencialServicio(std::string_view clave) {
    soap::ClienteSoap cliente(conexion_);
    cliente.Iniciar(url_, "", "", "");
    return core::CodificarClave(cliente.Llamar("DTS", {}) + std::string(clave), fuente_);
}

std::string ClienteServicio::llamar(std::string_view operacion, const Identidad& quien,
                                    std::vector<Valor>& resto) {
    std::vector<Valor> argumentos;
    argumentos.reserve(resto.size() + 2);
    argumentos.emplace_back(quien.usuario);
    argumentos.emplace_back(CredencialServicio(quien.password));
    std::move(resto.begin(), resto.end(), std::back_inserter(argumentos));
    auto resultado = cliente_.Llamar(operacion, argumentos);
    std::move(argumentos.begin() + 2, argumentos.end(), resto.begin());
    return resultado;
}

std::string ClienteServicio::DatosUsuario(const Identidad& quien) {
    return llamar("DatosUsuario", quien, {});
}

std::string ClienteServicio::Carpetaraizusuario(const Identidad& quien) {
    return llamar("Carpetaraizusuario", quien, {});
}

std::string ClienteServicio::ActualizaNserie(std::string_view carpetaCorta, std::string_view codigo) {
    std::vector<Valor> argumentos{texto(carpetaCorta), texto(codigo)};
    return cliente_.Llamar("ActualizaNserie", argumentos);
}

std::string ClienteServicio::listadocarpetas(const Identidad& quien) {
    return llamar("listadocarpetas", quien, {});
}

std::string ClienteServicio::ListadoArchivos(const Identidad& quien, std::string_view tipo) {
    return llamar("ListadoArchivos", quien, {quien.carpeta, texto(tipo)});
}

std::string ClienteServicio::FileSize(const Identidad& quien, std::string_view tipo,
                                      std::string_view nombre) {
    return llamar("FileSize", quien, {quien.carpeta, texto(tipo), nombreEscapado(nombre)});
}

std::string ClienteServicio::Backup(const Identidad& quien, std::string_view tipo, std::string_view nombre,
                                    soap::Bytes& bytes, std::int32_t posicion) {
    std::vector<Valor> resto;
    resto.reserve(6);
    resto.emplace_back(quien.cuenta);
    resto.emplace_back(quien.carpeta);
    resto.push_back(texto(tipo));
    resto.push_back(nombreEscapado(nombre));
    resto.emplace_back(std::move(bytes));
    resto.emplace_back(posicion);
    auto resultado = llamar("Backup", quien, resto);
    bytes = std::move(std::get<soap::Bytes>(resto[4]));
    return resultado;
}

std::string ClienteServicio::Restore(const Identidad& quien, std::string_view tipo, std::string_view nombre,
                                     std::int32_t posicion, std::int32_t cuantos, soap::Bytes& bytes) {
    std::vector<Valor> resto{quien.carpeta, texto(tipo), nombreEscapado(nombre),
                             posicion,      cuantos,     soap::Bytes()};
    auto resultado = llamar("Restore", quien, resto);
    bytes = std::move(std::get<soap::Bytes>(resto[5]));
    return resultado;
}

std::string ClienteServicio::EliminarArchivo(const Identidad& quien, std::string_view tipo,
                                             std::string_view nombre) {
    return llamar("EliminarArchivo", quien, {quien.carpeta, texto(tipo), nombreEscapado(nombre)});
}

std::string ClienteServicio::CalcularEspacioTotal(const Identidad& quien) {
    return llamar("CalcularEspacioTotal", quien, {});
}

std::string ClienteServicio::CarpetasNserie(std::string_view codigo) {
    std::vector<Valor> argumentos{texto(codigo)};
    return cliente_.Llamar("CarpetasNserie", argumentos);
}

std::string ClienteServicio::GrabarHistorico(const Identidad& quien, std::string_view entrada) {
    return llamar("GrabarHistorico", quien, {texto(entrada)});
}

std::string ClienteServicio::LeerHistorico(const Identidad& quien, std::string_view filtro) {
    return llamar("LeerHistorico", quien, {texto(filtro)});
}

std::string ClienteServicio::CapacidadContratada(const Identidad& quien, std::string_view codigo) {
    return llamar("CapacidadContratada", quien, {texto(codigo)});
}

}  // namespace tarvoline::service
