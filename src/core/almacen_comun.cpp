#include "core/almacen_comun.h"

namespace tarvoline::core {

std::optional<std::string> AlmacenComun::Pedir(std::string_view texto, std::string_view titulo,
                                               int longitud) {
    return escritorio_.Pedir({std::string(titulo), std::string(texto), true, longitud});
}

std::string AlmacenComun::ElegirCarpeta(std::string_view titulo) {
    return escritorio_.ElegirCarpeta(titulo).value_or("");
}

void AlmacenComun::Grabar(std::string_view clave, std::string_view valor, std::string_view seccion,
                          std::string_view producto) {
    try {
        ajustes_.GrabarRegistro(clave, valor, seccion, producto);
    } catch (const platform::ErrorAjustes&) {
        escritorio_.Mensaje({std::string(avisoSinGrabar), Icono::ninguno, ""});
    }
}

}  // namespace tarvoline::core
