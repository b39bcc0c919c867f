#include "server/contrato.h"

namespace tarvoline::server {
namespace {

using soap::Parametro;
using soap::TipoValor;

std::vector<Parametro> conIdentidad(std::vector<Parametro> otros = {}) {
    otros.insert(otros.begin(), {Parametro{"usuario"}, Parametro{"credencial"}});
    return otros;
}

}  // namespace

soap::Contrato contratoCopias() {
    const Parametro carpeta{"carpeta"};
    const Parametro tipo{"tipo"};
    const Parametro nombre{"nombre"};
    const Parametro cuenta{"codigoCuenta"};
    const Parametro posicion{"posicion", TipoValor::entero};
    return {
        "Copias",
        "urn:tarvoline:copias",
        {
            {"DTS", {}},
            {"DatosUsuario", conIdentidad()},
            {"Carpetaraizusuario", conIdentidad()},
            {"ActualizaNserie", {{"carpetaRaiz"}, cuenta}},
            {"listadocarpetas", conIdentidad()},
            {"ListadoArchivos", conIdentidad({carpeta, tipo})},
            {"FileSize", conIdentidad({carpeta, tipo, nombre})},
            {"Backup", conIdentidad({cuenta, carpeta, tipo, nombre, {"bytes", TipoValor::bytes}, posicion})},
            {"Restore", conIdentidad({carpeta,
                                      tipo,
                                      nombre,
                                      posicion,
                                      {"cuantos", TipoValor::entero},
                                      {"bytes", TipoValor::bytes, true}})},
            {"EliminarArchivo", conIdentidad({carpeta, tipo, nombre})},
            {"CalcularEspacioTotal", conIdentidad()},
            {"CarpetasNserie", {cuenta}},
            {"GrabarHistorico", conIdentidad({{"texto"}})},
            {"LeerHistorico", conIdentidad({{"filtro"}})},
            {"CapacidadContratada", conIdentidad({cuenta})},
        }};
}

}  // namespace tarvoline::server
