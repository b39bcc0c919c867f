// Helper of the tests: companies on disk.
#include "workflows/mundo_flujos.h"

#include "data/utilidades.h"

namespace tarvoline::pruebas {

void MundoFlujos::proteger(const std::string& ruta, std::string_view clave) {
    auto archivo =
        nucleo.archivos.abrir(ruta, platform::Apertura::escritura, platform::Comparticion::compartida);
    auto cabecera = data::CabeceraEmpresa::leer(*archivo);
    cabecera.poner(data::cabecera::PASSWORD1, data::EnmascararClave(clave));
    cabecera.grabar(*archivo);
}

}  // namespace tarvoline::pruebas
